/// An X server without a screen, with a keyboard, a mouse and a close button. While this object
/// lives, DISPLAY names the server; the server itself lives as long as the process.
///
/// There is no window manager: keys go to the window that the pointer is in. Coordinates are pixels
/// of the one window that is open, from its upper left corner.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace demo {

class XServer {
  public:
    /// Starts a server with a screen of that size, in pixels, and further arguments. If
    /// `is_connected` is false the engine is its only client: the other functions do nothing
    /// useful, and the server resets whenever that client leaves.
    explicit XServer(int width = 1600, int height = 1200, std::vector<std::string> arguments = {},
                     bool is_connected = true);
    ~XServer();
    XServer(const XServer &) = delete;
    XServer &operator=(const XServer &) = delete;

    bool isRunning() const;

    /// Waits until the window is on the screen and puts the pointer into it, so that it gets the
    /// keys; false if there is none after 20 seconds.
    bool enterWindow();

    /// `name` is X's name of the key, such as "space", "a" or "KP_Add".
    void pressKey(const std::string &name) { sendKey(name, true); }
    void releaseKey(const std::string &name) { sendKey(name, false); }

    void movePointer(int x, int y);
    /// 1 left, 2 middle, 3 right, 8 an extra one.
    void pressButton(int button) { sendButton(button, true); }
    void releaseButton(int button) { sendButton(button, false); }

    /// Asks the window to close, as the close button of its frame does.
    void closeWindow();
    void resizeWindow(int width, int height);
    /// Gives the keyboard focus to the window, or to another one.
    void focusWindow();
    void focusElsewhere();

    /// Another window lies over the whole screen for a moment.
    void coverWindow();

    /// What the screen shows of the window: red, green, blue and 255 of each pixel, row by row.
    std::vector<unsigned char> pixels() const;

    /// The title that a frame would show, in UTF-8.
    std::string windowTitle() const;

  private:
    struct Connection;
    void sendKey(const std::string &name, bool is_down);
    void sendButton(int button, bool is_down);

    std::unique_ptr<Connection> connection;
};

} // namespace demo
