// Checks, shows, converts and makes sprite files, with the engine's own readers.

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "spritetool/commands.h"

#include <iostream>

namespace {

using Words = std::vector<std::string>;

constexpr char usage[] = R"(usage: selvane-sprite COMMAND
  check FILE...            says what is wrong with sprite files, as FILE:LINE: REASON
  show [--once] FILE       plays a sprite in the terminal, until a key is pressed or once
  convert FILE [TO]        writes the sprite in the other of the two formats
  new WIDTH HEIGHT FRAMES  writes a sprite to draw in, to standard output
Exit status: 0 if all is well, 1 if a file is not, 2 if the command is none.
)";

constexpr int no_command = 2;

/// What the engine's readers log is said by the commands in other words. Whether sprites are UTF-8
/// the configuration of their game says.
void prepareEngine() {
    sv::LogManager::getInstance().setForcedFile("/dev/null");
    sv::LogManager::getInstance().startUp();
    sv::Config::getInstance().loadConfig("");
}

int run(const std::string &command, const Words &words) {
    const std::size_t count = words.size();
    if (command == "check" && count >= 1)
        return spritetool::check(words);
    if (command == "show" && count == 1)
        return spritetool::show(words[0], false);
    if (command == "show" && count == 2 && words[0] == "--once")
        return spritetool::show(words[1], true);
    if (command == "convert" && (count == 1 || count == 2))
        return spritetool::convert(words[0], count == 2 ? words[1] : "");
    if (command == "new" && count == 3)
        return spritetool::makeNew(words[0], words[1], words[2]);
    std::cerr << usage;
    return no_command;
}

} // namespace

int main(int argc, char *argv[]) {
    const Words words(argv + 1, argv + argc);
    if (!words.empty() && words[0] == "--help") {
        std::cout << usage;
        return 0;
    }
    prepareEngine();
    return run(words.empty() ? "" : words[0], Words(words.begin() + !words.empty(), words.end()));
}
