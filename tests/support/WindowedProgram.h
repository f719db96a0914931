/// A program in a process of its own, with a window on this desktop, and the hands and eyes of the
/// person in front of it.
#pragma once

#include <SFML/Graphics/Image.hpp>
#include <filesystem>
#include <memory>

namespace test {

class WindowedProgram {
  public:
    /// Starts a program in the folder that it lies in.
    explicit WindowedProgram(const std::filesystem::path &program);
    /// Kills the program if it still runs.
    ~WindowedProgram();
    WindowedProgram(const WindowedProgram &) = delete;
    WindowedProgram &operator=(const WindowedProgram &) = delete;

    bool isRunning() const;
    bool hasWindow() const;

    /// What the screen shows inside of the window's frame; empty without a window.
    sf::Image picture() const;

    /// A capital letter or a blank.
    void pressKey(char key);
    void releaseKey(char key);

    /// Waits, half a minute at most: the exit status, or -1.
    int waitForEnd() const;

  private:
    struct Process;

    std::unique_ptr<Process> process;
};

} // namespace test
