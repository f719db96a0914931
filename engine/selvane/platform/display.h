/// Whether the operating system can show a window. To be asked before SFML opens one, since SFML
/// ends the process if it can't.
#pragma once

#include <memory>

namespace sv::platform {

/// Keep it until the window is open: an X server without clients may restart, and refuses
/// connections while it does.
class DisplayCheck {
  public:
    DisplayCheck();
    ~DisplayCheck();
    DisplayCheck(const DisplayCheck &) = delete;
    DisplayCheck &operator=(const DisplayCheck &) = delete;

    /// Why no window can be opened, as a sentence for the user; null if one can be opened.
    const char *obstacle() const;

  private:
    struct Connection;

    std::unique_ptr<Connection> connection; // Null without a display.
};

} // namespace sv::platform
