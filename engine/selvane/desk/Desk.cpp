#include "selvane/desk/Desk.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/desk/logTail.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/input/InputManager.h"
#include "selvane/outside/HeldTime.h"
#include "selvane/outside/Outside.h"
#include "selvane/platform/process.h"
#include "selvane/platform/system.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace sv {

namespace {

constexpr int between_looks = 100; // Milliseconds, as all that follow.
constexpr int between_frames = 30; // Of a game that stands still.
constexpr int long_message = 5000;
constexpr int short_message = 2000;

constexpr std::size_t most_log_lines = 3;

// As Desk::speed: the game takes eight times as long, or a quarter of its time.
constexpr int slowest = -3;
constexpr int fastest = 2;

std::int64_t now() {
    return platform::timeSource().steadyTime();
}

std::int64_t after(int milliseconds) {
    return now() + std::int64_t{milliseconds} * 1000;
}

bool isWanted() {
    const char *variable = std::getenv(DESK_VARIABLE);
    return Config::getInstance().getDesk() || (variable && std::string_view(variable) == "1");
}

bool isTaken(const std::string &file) {
    return platform::isFile(file) || platform::isOtherThanFile(file);
}

/// Of a picture and its text, without their endings; no file has it yet.
std::string freeName() {
    std::array<char, 32> name{};
    for (int i = 1;; ++i) {
        std::snprintf(name.data(), name.size(), "selvane-%04d", i);
        if (!isTaken(std::string(name.data()) + ".png") &&
            !isTaken(std::string(name.data()) + ".txt"))
            return name.data();
    }
}

} // namespace

Desk &Desk::getInstance() {
    static Desk &instance = *new Desk;
    return instance;
}

DisplayManager &Desk::display() {
    return DisplayManager::getInstance();
}

void Desk::startUp() {
    is_on = isWanted();
    if (!is_on)
        return;
    files = std::make_unique<LiveFiles>();
    times.skip();
    next_look = now();
    const bool has_keys = InputManager::getInstance().hasInput();
    logLine("Desk: Note! The desk is on. Keys that do not reach the game: %s.",
            has_keys ? KEYS_TEXT : "none");
    if (has_keys)
        takeKeys();
    display().setOverlay([this] { drawOver(); });
}

void Desk::takeKeys() {
    InputManager &manager = InputManager::getInstance();
    input = std::make_unique<DeskInput>(
        manager.getSource(), [this](DeskKey key) { press(key); }, [this] { holdStep(); });
    manager.setSource(input.get());
    say(KEYS_TEXT, long_message);
}

void Desk::shutDown() {
    if (!std::exchange(is_on, false))
        return;
    setSpeed(0);
    setPaused(false);
    has_overlay = false;
    picture_text.clear();
    display().setOverlay(nullptr);
    InputManager &manager = InputManager::getInstance();
    if (input && &manager.getSource() == input.get())
        manager.setSource(&input->getSource());
    input.reset();
    files.reset();
}

void Desk::note(Piece piece) {
    times.end(piece);
    if (piece == Piece::SLEEP)
        lookAtFiles();
}

/// A game that is recorded, or played from a record, keeps what it has loaded: what it does may
/// hang on that.
void Desk::lookAtFiles() {
    if (now() < next_look)
        return;
    next_look = after(between_looks);
    if (Outside::getInstance().getMode() == Outside::Mode::LIVE)
        files->look();
    if (has_overlay)
        log_lines = lastLogLines(most_log_lines);
}

/// Between the frame that is shown and the input of the next one.
void Desk::holdStep() {
    if (!is_paused)
        return;
    const HeldTime held;
    while (input->takeMeanwhile() && is_paused && !is_step_wanted && platform::stopSignal() == 0) {
        lookAtFiles();
        display().showAgain();
        platform::timeSource().sleep(between_frames);
        input->getSource().beginStep();
    }
    is_step_wanted = false;
    times.skip();
}

void Desk::press(DeskKey key) {
    switch (key) {
    case DeskKey::PAUSE:
        return setPaused(!is_paused);
    case DeskKey::STEP:
        is_step_wanted = is_paused;
        return setPaused(true);
    case DeskKey::SLOWER:
        return setSpeed(speed - 1);
    case DeskKey::FASTER:
        return setSpeed(speed + 1);
    case DeskKey::OVERLAY:
        has_overlay = !has_overlay;
        return;
    case DeskKey::PICTURE:
        return takePicture();
    }
}

void Desk::setPaused(bool new_is_paused) {
    is_paused = new_is_paused;
    message.clear();
    display().setFrameKept(is_paused);
    captureIfNeeded();
}

void Desk::setSpeed(int new_speed) {
    const int old_speed = std::exchange(speed, std::clamp(new_speed, slowest, fastest));
    message.clear();
    Outside::getInstance().setStretch(std::exp2(-speed));
    if ((old_speed > 0) != (speed > 0)) // The screen may show too few frames for it.
        display().setVerticalSync(speed <= 0);
}

void Desk::takePicture() {
    const std::string name = freeName();
    if (display().saveScreenshot(name + ".png") != 0)
        return;
    picture_text = name + ".txt";
    captureIfNeeded();
    logLine("Desk: Note! A picture is saved as '%s.png', and as text beside it.", name.c_str());
    say("Saved: " + name + ".png and " + name + ".txt", short_message);
}

/// The text of a frame is captured while it is drawn: that of the frame that stands still, too, if
/// a picture of it is taken later.
void Desk::captureIfNeeded() {
    const bool is_needed = is_paused || !picture_text.empty();
    const bool is_change = is_needed ? !display().getCapture() : is_capturing;
    if (!is_change)
        return;
    is_capturing = is_needed;
    captureScreen(is_capturing);
}

void Desk::say(const std::string &text, int milliseconds) {
    message = text;
    message_end = after(milliseconds);
}

} // namespace sv
