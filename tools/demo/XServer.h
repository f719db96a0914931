/// An X server without a screen, and the hands of a person in front of it: keys, mouse, and the
/// close button. While this lives DISPLAY names the server, which itself lives as long as the
/// process.
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
    /// A screen of that size, with further arguments for the server. One that is not visited has no
    /// hands and no eyes: nobody is connected to it before the engine, and it begins anew each time
    /// that its last visitor leaves.
    explicit XServer(int width = 1600, int height = 1200, std::vector<std::string> arguments = {},
                     bool is_visited = true);
    ~XServer();
    XServer(const XServer &) = delete;
    XServer &operator=(const XServer &) = delete;

    bool isRunning() const;

    /// Waits until the window is on the screen and puts the pointer into it, so that it has the
    /// keys; false if none came.
    bool enterWindow();

    /// The name is X's, as "space", "a" or "KP_Add".
    void pressKey(const std::string &name) { sendKey(name, true); }
    void releaseKey(const std::string &name) { sendKey(name, false); }

    void movePointer(int x, int y);
    /// 1 left, 2 middle, 3 right, 8 a further one.
    void pressButton(int button) { sendButton(button, true); }
    void releaseButton(int button) { sendButton(button, false); }

    /// As a person's close button, or a window manager, does.
    void closeWindow();
    void resizeWindow(int width, int height);
    /// Gives the focus to that window or takes it to another, which hears the keys then.
    void focusWindow();
    void focusElsewhere();

    /// What its frame would show, in UTF-8.
    std::string windowTitle() const;

  private:
    struct Connection;
    void sendKey(const std::string &name, bool is_down);
    void sendButton(int button, bool is_down);

    std::unique_ptr<Connection> connection;
};

} // namespace demo
