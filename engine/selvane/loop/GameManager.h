/// Starts every other manager, runs the game loop at a fixed rate, and stops the managers again.
/// Its source holds the only list of what starts and stops when.
///
/// Delivers the step event. Engine and game run inside run(), on one thread.
#pragma once

#include "selvane/core/Manager.h"

namespace sv {

class Clock;
class FramePace;

class GameManager : public Manager {
  public:
    static GameManager &getInstance();

    /// True only for "sv-step".
    bool isValid(const std::string &event_type) const override;

    /// Loads the configuration and starts the managers. 0, or -1 with the reason in the log and on
    /// standard error; the managers that had started by then stay started until shutDown(), or a
    /// next try, stops them.
    int startUp() override;

    /// Stops the managers, last started first, and ends the game. Called from a handler, a draw()
    /// or a destructor of an object it ends the game, and run() stops the managers after the step;
    /// without a run(), a later call does. Must not be called from an object's constructor, which
    /// would go on with a deleted object: call setGameOver() there.
    void shutDown() override;

    /// Runs step after step until the game is over. May be called again: each call begins at step
    /// 0. Returns at once, with a line in the log, if the engine is not started or from a handler.
    void run();

    /// Ends the loop after the current step, which still updates, draws and sleeps. run() begins
    /// with a game that is not over, whatever was set before it: a game that cannot begin must not
    /// call run().
    void setGameOver(bool new_game_over = true);
    bool getGameOver() const { return game_over; }

    /// Milliseconds that a step should take.
    int getFrameTime() const { return frame_time; }

    /// The number of the current step; after run(), how many steps it made.
    int getStepCount() const { return step_count; }

    /// What main() should return after shutDown(): 0, or if a signal has ended the game, 128 and
    /// its number, as shells say it, or 74 if the display has gone. SIGINT, SIGTERM and SIGHUP end
    /// the game as a closed window does, and a second one ends the process.
    static int getExitStatus();

    // Called by the engine.

    void reset() override;

  private:
    GameManager();

    int startManagers();
    void stopManagers();
    void endAtExit();
    void runLoop();
    void runStep(Clock &clock, FramePace &pace);
    void serviceNetwork(const Clock &clock, const FramePace &pace);
    void setStepCount(int new_step_count);

    bool game_over = false;
    static constexpr int default_frame_time = 33;
    int frame_time = default_frame_time;
    int step_count = 0;
    bool is_start_failed = false;
    bool is_stopping = false;
    bool is_stop_wanted = false; // By a handler, for run() to do.
    bool is_stopped_by_run = false;
    bool warned_nested_run = false;
};

} // namespace sv
