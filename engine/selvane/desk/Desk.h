/// What the engine offers to whoever writes a game while it runs: sprites and sounds that are saved
/// are loaded anew, keys stop the game and let it go on, an overlay shows what is there, and a key
/// takes a picture. docs/desk.md says how to use it.
///
/// Does nothing unless the configuration or the environment asks for it. Nobody has to read it to
/// understand the rest of the engine. Game-loop thread only.
#pragma once

#include "selvane/desk/DeskInput.h"
#include "selvane/desk/LiveFiles.h"
#include "selvane/desk/StepTimes.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace sv {

class DisplayManager;

/// "1" puts the desk on, as the setting "desk" does.
inline constexpr char DESK_VARIABLE[] = "SELVANE_DESK";

class Desk {
  public:
    static Desk &getInstance();

    /// Once everything is started, before the game has loaded anything.
    void startUp();

    /// Before anything is stopped.
    void shutDown();

    /// A piece of a step is done; a step ends with SLEEP.
    void endPiece(Piece piece) {
        if (is_on)
            note(piece);
    }

  private:
    static constexpr char KEYS_TEXT[] =
        "F5 pause   F6 one step   F7 slower   F8 faster   F9 overlay   F10 picture";

    Desk() = default;

    static DisplayManager &display();
    void takeKeys();
    void note(Piece piece);
    void lookAtFiles();
    void holdStep();
    void press(DeskKey key);
    void setPaused(bool new_is_paused);
    void setSpeed(int new_speed);
    void takePicture();
    void captureIfNeeded();
    void say(const std::string &text, int milliseconds);
    void drawOver();
    void drawAtBottom() const;
    std::string statusText() const;

    bool is_on = false;
    std::unique_ptr<LiveFiles> files;
    std::unique_ptr<DeskInput> input; // Null where the game has no input.
    StepTimes times;
    std::int64_t next_look = 0; // Microseconds, as TimeSource::steadyTime().
    bool is_paused = false;
    bool is_step_wanted = false;
    int speed = 0; // The exponent of 2.
    bool has_overlay = false;
    std::vector<std::string> log_lines; // The last ones.
    std::string picture_text;           // The file for the text of the next frame, or none.
    bool is_capturing = false;
    std::string message; // Until:
    std::int64_t message_end = 0;
};

} // namespace sv
