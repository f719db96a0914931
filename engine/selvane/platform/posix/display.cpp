#include "selvane/platform/display.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/keysym.h>
#include <algorithm>
#include <array>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace sv::platform {

namespace {

constexpr int least_bits_per_pixel = 24;
constexpr int title_bar = 40; // Pixels; how high it is shows only once the window is there.

DisplayWatch display_watch{};

int passError(Display *display, XErrorEvent *error) {
    std::array<char, 128> text{};
    XGetErrorText(display, error->error_code, text.data(), text.size());
    display_watch.on_error(std::string(text.data()) + ", request " +
                               std::to_string(error->request_code) + "." +
                               std::to_string(error->minor_code),
                           error->resourceid);
    return 0;
}

/// Xlib ends the process with status 1 if this returns.
int passLoss(Display * /*display*/) {
    static bool is_passed = false;
    if (!std::exchange(is_passed, true))
        display_watch.on_loss();
    _exit(display_lost_status);
}

bool hasOpenGL(Display *display) {
    int opcode = 0;
    int first_event = 0;
    int first_error = 0;
    return XQueryExtension(display, "GLX", &opcode, &first_event, &first_error) != 0;
}

} // namespace

void watchDisplay(const DisplayWatch &watch) {
    display_watch = watch;
    XSetErrorHandler(passError);
    XSetIOErrorHandler(passLoss);
}

struct DisplayConnection {
    explicit DisplayConnection(Display *new_display) : display(new_display) {}
    ~DisplayConnection() { XCloseDisplay(display); }
    DisplayConnection(const DisplayConnection &) = delete;
    DisplayConnection &operator=(const DisplayConnection &) = delete;

    Display *display;
};

namespace {

/// Graphics drivers crash when a file of theirs cannot be opened.
bool mayOpenFiles() {
    std::array<int, 8> files{}; // A software driver takes three.
    for (int &file : files)
        file = open("/dev/null", O_RDONLY | O_CLOEXEC);
    for (const int file : files)
        if (file >= 0)
            close(file);
    return files.back() >= 0;
}

/// SFML ends the process if it is refused a connection, so one is tried.
bool takesOneMore() {
    Display *display = XOpenDisplay(nullptr);
    if (display)
        XCloseDisplay(display);
    return display;
}

} // namespace

DisplayCheck::DisplayCheck() {
    if (Display *display = XOpenDisplay(nullptr))
        connection = std::make_unique<DisplayConnection>(display);
}

DisplayCheck::~DisplayCheck() = default;

bool DisplayCheck::hasLatinLetters() const {
    return XKeysymToKeycode(connection->display, XK_a) != 0;
}

// A window manager says what its panels leave.
Room DisplayCheck::room() const {
    Display *display = connection->display;
    const int screen = XDefaultScreen(display);
    Room room{XDisplayWidth(display, screen), XDisplayHeight(display, screen)};
    Atom type = 0;
    int bits = 0;
    unsigned long count = 0;
    unsigned long bytes_left = 0;
    unsigned char *bytes = nullptr;
    XGetWindowProperty(display, XDefaultRootWindow(display),
                       XInternAtom(display, "_NET_WORKAREA", False), 0, 4, False, XA_CARDINAL,
                       &type, &bits, &count, &bytes_left, &bytes);
    if (bits == 32 && count == 4) {
        std::array<long, 4> area{}; // Xlib's 32 bits are a long.
        std::memcpy(area.data(), bytes, sizeof area);
        room.width = std::min(room.width, static_cast<int>(area[2]));
        room.height = std::min(room.height, static_cast<int>(area[3]) - title_bar);
    }
    if (bytes)
        XFree(bytes);
    return room;
}

const char *DisplayCheck::obstacle() const {
    if (!connection)
        return "No X display can be opened; DISPLAY names the one to use.";
    if (!mayOpenFiles())
        return "The program may open too few files; ulimit -n says how many, and 64 are enough.";
    if (!takesOneMore())
        return "The X display takes no more programs: it lacks memory, or too many are open.";
    if (!hasOpenGL(connection->display))
        return "The X display has no OpenGL (its extension GLX).";
    if (XDefaultScreen(connection->display) != 0)
        return "The window can be on the first screen of an X server only; DISPLAY names another.";
    if (XDefaultDepth(connection->display, XDefaultScreen(connection->display)) <
        least_bits_per_pixel)
        return "The X display has fewer than 24 bits per pixel.";
    return nullptr;
}

WindowWatch::WindowWatch(std::uintptr_t window) {
    Display *display = XOpenDisplay(nullptr);
    if (!display)
        return;
    connection = std::make_unique<DisplayConnection>(display);
    static bool is_refused;
    is_refused = false;
    const XErrorHandler handler = XSetErrorHandler([](Display * /*display*/, XErrorEvent *) {
        is_refused = true;
        return 0;
    });
    XSelectInput(display, window, ExposureMask);
    XSync(display, False);
    XSetErrorHandler(handler);
    if (is_refused)
        connection.reset();
}

WindowWatch::~WindowWatch() = default;

bool WindowWatch::isUncovered() {
    if (!connection)
        return true;
    // Of a display that has gone, SFML must be told first: as the process ends, SFML flushes its
    // connection, and if that fails only then, the log is not finished.
    pollfd socket{ConnectionNumber(connection->display), POLLIN, 0};
    if (poll(&socket, 1, 0) == 0)
        return false;
    if ((socket.revents & POLLHUP) != 0)
        return true;
    bool is_uncovered = false;
    while (XPending(connection->display) > 0) {
        XEvent event{};
        XNextEvent(connection->display, &event);
        is_uncovered = is_uncovered || event.type == Expose;
    }
    return is_uncovered;
}

} // namespace sv::platform
