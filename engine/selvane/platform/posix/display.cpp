#include "selvane/platform/display.h"

#include <X11/Xlib.h>

namespace sv::platform {

namespace {

constexpr int least_bits_per_pixel = 24;

bool hasOpenGL(Display *display) {
    int opcode = 0;
    int first_event = 0;
    int first_error = 0;
    return XQueryExtension(display, "GLX", &opcode, &first_event, &first_error) != 0;
}

} // namespace

struct DisplayCheck::Connection {
    explicit Connection(Display *new_display) : display(new_display) {}
    ~Connection() { XCloseDisplay(display); }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    Display *display;
};

DisplayCheck::DisplayCheck() {
    if (Display *display = XOpenDisplay(nullptr))
        connection = std::make_unique<Connection>(display);
}

DisplayCheck::~DisplayCheck() = default;

const char *DisplayCheck::obstacle() const {
    if (!connection)
        return "No X display can be opened; DISPLAY names the one to use.";
    if (!hasOpenGL(connection->display))
        return "The X display has no OpenGL (its extension GLX).";
    if (XDefaultDepth(connection->display, XDefaultScreen(connection->display)) <
        least_bits_per_pixel)
        return "The X display has fewer than 24 bits per pixel.";
    return nullptr;
}

} // namespace sv::platform
