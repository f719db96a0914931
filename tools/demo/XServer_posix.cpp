#include "demo/XServer.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <thread>
#include <unistd.h>

/// Replaces the system's and does nothing: graphics drivers stay loaded, so that what they keep
/// until the process ends can still be reached and is no leak.
extern "C" int dlclose(void * /*handle*/) noexcept {
    return 0;
}

namespace demo {

namespace {

std::vector<std::string> serverCommand(int width, int height, int answer,
                                       std::vector<std::string> further) {
    std::vector<std::string> command{"Xvfb", "-displayfd", std::to_string(answer), "-screen", "0"};
    command.push_back(std::to_string(width) + "x" + std::to_string(height) + "x24");
    // No auto-repeat: on a slow machine a held key would repeat.
    command.insert(command.end(), {"-r", "-nolisten", "tcp"});
    command.insert(command.end(), further.begin(), further.end());
    return command;
}

/// Replaces the process by the server. The system ends it when the parent has ended, for whatever
/// reason; not earlier, since SFML keeps its connection until then.
[[noreturn]] void becomeServer(const std::vector<std::string> &command) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nowhere, standard);
    std::vector<char *> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

/// The line that the server writes once it accepts connections; empty if it ended instead.
std::string readLine(int from) {
    std::string line;
    char c = 0;
    while (read(from, &c, 1) == 1 && c != '\n')
        line += c;
    return line;
}

} // namespace

struct XServer::Connection {
    Display *display = nullptr;

    Window root() const { return XDefaultRootWindow(display); }

    /// The visible window, or 0.
    Window window() const {
        Window root_return = 0;
        Window parent = 0;
        Window *children = nullptr;
        unsigned count = 0;
        XQueryTree(display, root(), &root_return, &parent, &children, &count);
        Window found = 0;
        for (unsigned i = 0; i < count; ++i) {
            XWindowAttributes attributes{};
            if (XGetWindowAttributes(display, children[i], &attributes) != 0 &&
                attributes.map_state == IsViewable && attributes.c_class == InputOutput)
                found = children[i];
        }
        if (children)
            XFree(children);
        return found;
    }

    /// False if there is none after 20 seconds.
    bool waitForWindow() const {
        using namespace std::chrono;
        const auto deadline = steady_clock::now() + seconds(20);
        while (window() == 0 && steady_clock::now() < deadline)
            std::this_thread::sleep_for(milliseconds(1));
        return window() != 0;
    }
};

XServer::XServer(int width, int height, std::vector<std::string> arguments, bool is_connected)
    : connection(std::make_unique<Connection>()) {
    // One thread for software rendering, so that pictures do not depend on the number of cores.
    setenv("LP_NUM_THREADS", "1", 1);
    int answer[2];
    if (pipe(answer) != 0)
        return;
    const auto command = serverCommand(width, height, answer[1], std::move(arguments));
    const pid_t server = fork();
    if (server == 0)
        becomeServer(command);
    close(answer[1]);
    const std::string number = readLine(answer[0]);
    close(answer[0]);
    if (number.empty())
        return;
    setenv("DISPLAY", (":" + number).c_str(), 1);
    if (is_connected)
        connection->display = XOpenDisplay(nullptr);
}

XServer::~XServer() {
    if (connection->display)
        XCloseDisplay(connection->display);
    unsetenv("DISPLAY");
}

bool XServer::isRunning() const {
    return connection->display != nullptr;
}

bool XServer::enterWindow() {
    if (!connection->waitForWindow())
        return false;
    // A move to where the pointer already is sends no event.
    movePointer(1, 1);
    movePointer(2, 2);
    return true;
}

void XServer::sendKey(const std::string &name, bool is_down) {
    Display *display = connection->display;
    const KeyCode code = XKeysymToKeycode(display, XStringToKeysym(name.c_str()));
    XTestFakeKeyEvent(display, code, is_down ? True : False, CurrentTime);
    XSync(display, False);
}

void XServer::movePointer(int x, int y) {
    Display *display = connection->display;
    int root_x = 0;
    int root_y = 0;
    Window child = 0;
    XTranslateCoordinates(display, connection->window(), connection->root(), x, y, &root_x, &root_y,
                          &child);
    XTestFakeMotionEvent(display, -1, root_x, root_y, CurrentTime);
    XSync(display, False);
}

void XServer::sendButton(int button, bool is_down) {
    XTestFakeButtonEvent(connection->display, static_cast<unsigned>(button), is_down ? True : False,
                         CurrentTime);
    XSync(connection->display, False);
}

void XServer::closeWindow() {
    Display *display = connection->display;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = connection->window();
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, event.xclient.window, False, NoEventMask, &event);
    XSync(display, False);
}

void XServer::resizeWindow(int width, int height) {
    XResizeWindow(connection->display, connection->window(), static_cast<unsigned>(width),
                  static_cast<unsigned>(height));
    XSync(connection->display, False);
}

void XServer::focusWindow() {
    XSetInputFocus(connection->display, connection->window(), RevertToPointerRoot, CurrentTime);
    XSync(connection->display, False);
}

void XServer::focusElsewhere() {
    Display *display = connection->display;
    // An invisible one.
    const Window other = XCreateWindow(display, connection->root(), 0, 0, 1, 1, 0, CopyFromParent,
                                       InputOnly, CopyFromParent, 0, nullptr);
    XMapWindow(display, other);
    XSetInputFocus(display, other, RevertToPointerRoot, CurrentTime);
    XSync(display, False);
}

void XServer::coverWindow() {
    Display *display = connection->display;
    const Window cover = XCreateSimpleWindow(display, connection->root(), 0, 0, 10000, 10000, 0, 0,
                                             WhitePixel(display, DefaultScreen(display)));
    XMapWindow(display, cover);
    XSync(display, False);
    XDestroyWindow(display, cover);
    XSync(display, False);
}

std::vector<unsigned char> XServer::pixels() const {
    const Window window = connection->window();
    XWindowAttributes size{};
    XGetWindowAttributes(connection->display, window, &size);
    XImage *image = XGetImage(connection->display, window, 0, 0, static_cast<unsigned>(size.width),
                              static_cast<unsigned>(size.height), AllPlanes, ZPixmap);
    if (!image)
        return {};
    std::vector<unsigned char> pixels(
        std::size_t{4} * static_cast<unsigned>(size.width * size.height), 255);
    unsigned char *to = pixels.data();
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            const unsigned long pixel = XGetPixel(image, x, y);
            for (const int shift : {16, 8, 0})
                *to++ = static_cast<unsigned char>(pixel >> shift & 0xFF);
            ++to; // Its opacity.
        }
    XDestroyImage(image);
    return pixels;
}

std::string XServer::windowTitle() const {
    Display *display = connection->display;
    Atom type = 0;
    int bits = 0;
    unsigned long count = 0;
    unsigned long bytes_left = 0;
    unsigned char *text = nullptr;
    XGetWindowProperty(display, connection->window(), XInternAtom(display, "_NET_WM_NAME", False),
                       0, 100, False, XInternAtom(display, "UTF8_STRING", False), &type, &bits,
                       &count, &bytes_left, &text);
    if (!text)
        return "";
    const std::string title(reinterpret_cast<const char *>(text), count);
    XFree(text);
    return title;
}

} // namespace demo
