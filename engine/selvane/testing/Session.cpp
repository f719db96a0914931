#include "selvane/testing/Session.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/utf8.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/testing/EngineState.h"
#include "selvane/testing/Lockstep.h"
#include "selvane/testing/ScriptedInput.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace sv {

namespace {

constexpr int steps_to_leave = 100;
bool is_any_session = false;

/// The program of a test that brings none.
int runEngine() {
    GameManager &game = GameManager::getInstance();
    const bool is_started = game.startUp() == 0;
    if (is_started)
        game.run();
    game.shutDown();
    return is_started ? 0 : 1;
}

std::string settingsOf(const SessionOptions &options) {
    std::string settings = options.in_window ? "headless:false," : "headless:true,";
    settings += "random_seed:" + std::to_string(options.seed) + ",";
    if (options.columns != 0)
        settings += "window_horizontal_chars:" + std::to_string(options.columns) + ",";
    if (options.rows != 0)
        settings += "window_vertical_chars:" + std::to_string(options.rows) + ",";
    return settings + options.config;
}

/// A test that a program takes with it would otherwise pass.
void refuseExit() {
    if (!is_any_session)
        return;
    std::fputs("Session: Error! The program has called exit(), which ends the test.\n", stderr);
    std::_Exit(1);
}

/// True while a session lives; refuses a second one.
class OnlySession {
  public:
    OnlySession() {
        [[maybe_unused]] static const int registered = std::atexit(refuseExit);
        if (is_any_session || GameManager::getInstance().isStarted() ||
            LogManager::getInstance().isStarted())
            throw std::logic_error("Session: the engine is started, or there is another session.");
        is_any_session = true;
    }
    ~OnlySession() { is_any_session = false; }
    OnlySession(const OnlySession &) = delete;
    OnlySession &operator=(const OnlySession &) = delete;
};

} // namespace

/// A session from its beginning to its end.
class Session::Play {
  public:
    Play(std::function<int()> program, const SessionOptions &options)
        : input([this] { lockstep.pause(); }), lockstep(std::move(program), options.patience_s) {
        // On Windows each thread has random numbers of its own: this seeds those of the test, which
        // may spawn objects that draw some. The engine seeds those of the program.
        if (options.seed > 0)
            std::srand(static_cast<unsigned>(options.seed));
        Config::getInstance().forceConfig(settingsOf(options));
        LogManager::getInstance().setLogLevel(options.log_level);
        InputManager::getInstance().setSource(&input);
        if (!options.folder.empty())
            std::filesystem::current_path(options.folder);
    }

    void resume() {
        is_begun = true;
        lockstep.resume();
    }

    bool isUnderWay() const { return is_begun && !lockstep.hasEnded(); }

    void leave() {
        input.closeWindow();
        for (int step = 0; isUnderWay() && step < steps_to_leave; ++step)
            lockstep.resume();
        if (isUnderWay())
            std::fprintf(stderr, "Session: Warning! The program goes on without a window, and is "
                                 "ended by an exception.\n");
    }

    OnlySession only;
    ScriptedInput input;
    EngineState engine; // Goes before the input that it takes out of the engine.
    Lockstep lockstep;
    bool is_begun = false;
};

Session::Session(const SessionOptions &options) : Session(options, runEngine) {}

Session::Session(const SessionOptions &options, std::function<int()> program)
    : under_way(std::make_unique<Play>(std::move(program), options)) {}

Session::~Session() {
    try {
        end();
    } catch (const std::exception &error) {
        std::fprintf(stderr, "Session: Error! The program has thrown: %s\n", error.what());
    } catch (...) {
        std::fprintf(stderr, "Session: Error! The program has thrown something.\n");
    }
}

int Session::start() {
    if (under_way && !under_way->is_begun)
        under_way->resume();
    return hasEnded() ? -1 : 0;
}

bool Session::play(int steps) {
    start();
    for (int step = 0; step < steps && !hasEnded(); ++step)
        under_way->resume();
    return !hasEnded();
}

void Session::end() {
    if (!under_way)
        return;
    std::exception_ptr failure;
    try {
        under_way->leave();
    } catch (...) {
        failure = std::current_exception();
    }
    remains = {screen(), colors(), log(), exitStatus()};
    under_way.reset();
    if (failure)
        std::rethrow_exception(failure);
}

void Session::pressKey(Keyboard::Key key) {
    current().input.pressKey(key);
}

void Session::releaseKey(Keyboard::Key key) {
    current().input.releaseKey(key);
}

void Session::tapKey(Keyboard::Key key) {
    pressKey(key);
    releaseKey(key);
}

void Session::typeText(const std::string &text) {
    for (const char32_t character : fromUtf8(text))
        current().input.typeCharacter(character);
}

void Session::moveMouse(Vector cell) {
    current().input.moveMouse(cell);
}

void Session::pressButton(EventMouseButton button) {
    current().input.pressButton(button);
}

void Session::releaseButton(EventMouseButton button) {
    current().input.releaseButton(button);
}

void Session::click(Vector cell, EventMouseButton button) {
    moveMouse(cell);
    pressButton(button);
    releaseButton(button);
}

void Session::closeWindow() {
    current().input.closeWindow();
}

std::string Session::screen() const {
    return under_way ? screenText() : remains.screen;
}

std::string Session::colors() const {
    return under_way ? screenColors() : remains.colors;
}

std::string Session::log() const {
    return under_way ? under_way->engine.logText() : remains.log;
}

ManualTime &Session::getTime() {
    return current().engine.getTime();
}

bool Session::hasEnded() const {
    return !under_way || under_way->lockstep.hasEnded();
}

int Session::exitStatus() const {
    return under_way ? under_way->lockstep.getStatus() : remains.status;
}

Session::Play &Session::current() {
    if (!under_way)
        throw std::logic_error("Session: it has ended.");
    return *under_way;
}

} // namespace sv
