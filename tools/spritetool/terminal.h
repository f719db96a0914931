/// The terminal that a program was started in.
#pragma once

#include <memory>

namespace spritetool {

/// Whether standard output is one.
bool isTerminal();

/// While an object of this class lives, keys come one by one, and are not shown.
class KeyMode {
  public:
    KeyMode();
    ~KeyMode();
    KeyMode(const KeyMode &) = delete;
    KeyMode &operator=(const KeyMode &) = delete;

    /// Waits; whether a key was pressed meanwhile. Without a keyboard it only waits.
    bool waitForKey(int milliseconds) const;

  private:
    struct Saved;
    std::unique_ptr<Saved> saved; // Null: standard input is no terminal.
};

} // namespace spritetool
