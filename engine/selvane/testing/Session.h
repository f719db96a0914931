/// A game under test: the engine without a window, with the same random numbers each time and a
/// clock that only the game loop moves, played by the test step by step. Keys and mouse reach the
/// game as real ones do, and the screen, the log and the world can be looked at between steps.
///
/// The game runs in a thread of its own, but never at the same time as the test: it stands still
/// whenever the test runs. Where it stands, in each step, is after the frame is shown and before
/// the input is read, so what the test sees is what a player would see there, and what it presses
/// counts in this step. The test may call the engine in between, but not GameManager's run() or
/// shutDown().
///
/// At its end everything is as it was before: settings, log, clock, working folder, objects, ids.
/// So a process may have as many sessions as it likes, one after another, and each begins like the
/// first. A game's own variables are its own concern; for those of a manager there is
/// Manager::reset().
#pragma once

#include "selvane/core/EventMouse.h"
#include "selvane/core/Keyboard.h"
#include "selvane/core/Vector.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

#include <concepts>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace sv {

struct SessionOptions {
    int seed = 1;         ///< Of the random numbers; 0 takes the time, -1 those of the process.
    int columns = 0;      ///< The window's width in cells; 0: as configured.
    int rows = 0;         ///< Likewise its height.
    std::string config{}; ///< Settings that win over the file's, as "frame_time:20,".
    std::string folder{}; ///< Where the program finds its sprites and settings. Empty: here.
    int log_level = 0;
    int patience_s = 30;    ///< Seconds that a step may take; then the process is aborted.
    bool in_window = false; ///< Draws into a window as well, which takes a display.
};

class Session {
  public:
    /// The engine alone: what is in the world, the test spawns.
    explicit Session(const SessionOptions &options = {});

    /// A whole program, a function that does what its main() does and returns its exit status: it
    /// starts, runs and stops the engine itself, as often as it likes. Throws std::logic_error if
    /// the engine is started or there is another session.
    template<std::invocable Program>
    explicit Session(Program program, const SessionOptions &options = {})
        : Session(options, std::function<int()>(std::move(program))) {}

    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// Plays until the program stands before its first input: in step 0, after the step event. 0,
    /// or -1 if it has ended before that.
    int start();

    /// Plays on for that many steps, of one run() or of several, and starts the program if that has
    /// not been done. False if the program has ended meanwhile. Throws what the program throws.
    bool play(int steps = 1);

    /// Closes the window, plays until the program has ended, and puts everything back. A program
    /// that goes on for more than 100 steps without a window is ended by an exception, with a line
    /// on standard error. The destructor does it too.
    void end();

    /// Down until it is released: one event as it goes down, and one more in each step. A press and
    /// a release without a step between them give two events and none for holding.
    void pressKey(Keyboard::Key key);
    void releaseKey(Keyboard::Key key);
    /// Pressed and released at once.
    void tapKey(Keyboard::Key key);

    /// Types a text in UTF-8: an EventText for each character, and no keys.
    void typeText(const std::string &text);

    /// To that cell of the window; 0.5 is the middle of a cell's side.
    void moveMouse(Vector cell);
    void pressButton(EventMouseButton button = LEFT);
    void releaseButton(EventMouseButton button = LEFT);
    /// Moved there, pressed and released at once.
    void click(Vector cell, EventMouseButton button = LEFT);

    void closeWindow();

    /// See screenText() and screenColors(); at the end of the session still the last frame.
    std::string screen() const;
    std::string colors() const;

    /// What the engine and the game have logged since the engine's last start, without times and
    /// step counts. At the end of the session still there.
    std::string log() const;

    /// The world's objects of a class, or of one derived from it.
    template<typename SomeObject>
    static std::vector<SomeObject *> objects(bool include_inactive = false) {
        std::vector<SomeObject *> found;
        for (Object *object : WorldManager::getInstance().getAllObjects(include_inactive))
            if (auto *one = dynamic_cast<SomeObject *>(object))
                found.push_back(one);
        return found;
    }

    /// For a test that sets the clock. REQUIRES: before end().
    ManualTime &getTime();

    bool hasEnded() const;

    /// What the program has returned; -1 while it runs, or if it had to be ended.
    int exitStatus() const;

  private:
    class Play;

    Session(const SessionOptions &options, std::function<int()> program);
    Play &current();

    std::unique_ptr<Play> under_way; // Null when the session has ended, of which this remains:
    struct {
        std::string screen, colors, log;
        int status = -1;
    } remains;
};

} // namespace sv
