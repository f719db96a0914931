#include "spritetool/terminal.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace spritetool {

struct KeyMode::Saved {
    termios mode{};
};

bool isTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

KeyMode::KeyMode() {
    if (isatty(STDIN_FILENO) != 1)
        return;
    saved = std::make_unique<Saved>();
    tcgetattr(STDIN_FILENO, &saved->mode);
    termios by_key = saved->mode;
    by_key.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    tcsetattr(STDIN_FILENO, TCSANOW, &by_key);
}

KeyMode::~KeyMode() {
    if (saved)
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &saved->mode);
}

bool KeyMode::waitForKey(int milliseconds) const {
    pollfd keys{STDIN_FILENO, POLLIN, 0};
    return poll(&keys, saved ? 1 : 0, milliseconds) > 0;
}

} // namespace spritetool
