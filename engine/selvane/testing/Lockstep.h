/// Runs a program in a thread of its own, in turns with its caller: one of the two runs at any
/// time, so that what they share needs no lock.
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace sv {

class Lockstep {
  public:
    /// The program waits for the first resume(). It has `new_patience_s` seconds for each of its
    /// turns; if it takes longer, the process is aborted with a line on standard error.
    Lockstep(std::function<int()> new_program, int new_patience_s);

    /// A program that waits in a pause is ended by an exception; if it catches that and pauses
    /// again, the process is aborted. One that was never resumed is not begun.
    ~Lockstep();
    Lockstep(const Lockstep &) = delete;
    Lockstep &operator=(const Lockstep &) = delete;

    /// Lets the program run until it pauses or ends. Throws what has ended the program.
    void resume();

    bool hasEnded() const { return has_ended; }

    /// What the program has returned; -1 before that, or if an exception has ended it.
    int getStatus() const { return status; }

    // Called by the program; in any other thread it does nothing.

    void pause();

  private:
    enum class Turn { CALLER, PROGRAM };
    struct Cancelled {};

    void takeTurn();
    void run();
    void runProgram();
    void waitForTurn(std::unique_lock<std::mutex> &lock);

    std::function<int()> program;
    int patience_s;
    std::mutex mutex;
    std::condition_variable turn_changed;
    Turn turn = Turn::CALLER;
    bool is_cancelled = false;
    bool has_ended = false;
    int status = -1;
    std::exception_ptr failure;
    std::thread thread; // The last one, for it uses the others.
};

} // namespace sv
