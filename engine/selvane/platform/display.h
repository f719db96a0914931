/// Whether the operating system can show a window, asked before the windowing library tries: that
/// library ends the process where it cannot.
#pragma once

#include <memory>

namespace sv::platform {

/// To be kept until the window is open: a display that nobody is connected to may begin anew, and
/// refuses everybody while it does.
class DisplayCheck {
  public:
    DisplayCheck();
    ~DisplayCheck();
    DisplayCheck(const DisplayCheck &) = delete;
    DisplayCheck &operator=(const DisplayCheck &) = delete;

    /// Why no window can be opened, as a sentence for a person; null if nothing stands in its way.
    const char *obstacle() const;

  private:
    struct Connection;

    std::unique_ptr<Connection> connection; // Null without a display.
};

} // namespace sv::platform
