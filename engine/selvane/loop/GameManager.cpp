#include "selvane/loop/GameManager.h"

#include "selvane/core/Clock.h"
#include "selvane/core/Config.h"
#include "selvane/core/EventStep.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/core/RaisedFlag.h"
#include "selvane/desk/Desk.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/FramePace.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/outside/Outside.h"
#include "selvane/path/PathManager.h"
#include "selvane/platform/display.h"
#include "selvane/platform/process.h"
#include "selvane/platform/system.h"
#include "selvane/record/Recorder.h"
#include "selvane/record/Replayer.h"
#include "selvane/record/recordSettings.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/world/WorldManager.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <utility>

namespace sv {

namespace {

constexpr double engine_version = SELVANE_VERSION;
constexpr char ruler[] = "****************************************************";
constexpr unsigned timer_period_ms = 1;
constexpr int unseeded = -1;
constexpr int status_of_signals = 128; // Of a process that signal 0 would have ended.
constexpr char standard_error[] = "/dev/stderr";

/// A manager that starts after the log and stops before it.
struct Managed {
    Manager &manager;
    const char *name;
    const char *capitalized_name;
};

/// In the order of starting; they stop from the last to the first.
std::array<Managed, 6> managedInOrder() {
    return {{{DisplayManager::getInstance(), "display", "Display"},
             {InputManager::getInstance(), "input", "Input"},
             {NetworkManager::getInstance(), "network", "Network"},
             {ResourceManager::getInstance(), "resource", "Resource"},
             {WorldManager::getInstance(), "world", "World"},
             {PathManager::getInstance(), "path", "Path"}}};
}

/// Networking is the one manager that a configuration can leave out.
bool isWanted(const Managed &managed) {
    return &managed.manager != &NetworkManager::getInstance() ||
           Config::getInstance().getNetworking();
}

void logBanner() {
    logLine("%s", ruler);
    logLine("** Selvane version %.2f **", engine_version);
    logLine("** Game engine started **");
    logLine("%s", ruler);
}

void logWorkingDirectory() {
    constexpr std::size_t capacity = 256;
    const std::string directory = platform::workingDirectory(capacity);
    logLine(1, "Working directory:");
    logLine(1, "  %s", directory.empty() ? "(full path too long)" : directory.c_str());
}

/// For a person: without the name of the function that logged it.
std::string_view asSentence(std::string_view failure) {
    for (const std::string_view before : {"(): ", "Note! "}) {
        const std::size_t found = failure.find(before);
        if (found != std::string_view::npos)
            failure.remove_prefix(found + before.size());
    }
    return failure;
}

/// The log has the reason already. Standard error gets it too, unless it is the log: a person who
/// starts a game from a terminal looks there.
int failStart(const char *manager) {
    LogManager &log = LogManager::getInstance();
    const std::string reason(asSentence(log.getLastFailure()));
    logFailure("Error starting %s manager!", manager);
    if (log.isStarted() && log.getFileName() != standard_error)
        std::fprintf(stderr, "Selvane did not start. %s\nThe log may say more: %s\n",
                     reason.c_str(), log.getFileName().c_str());
    return -1;
}

/// The world begins as large as the window, and the view shows all of it.
void fitWorldToWindow() {
    const DisplayManager &display = DisplayManager::getInstance();
    const Box window{{0, 0},
                     static_cast<float>(display.getHorizontal()),
                     static_cast<float>(display.getVertical())};
    WorldManager &world = WorldManager::getInstance();
    world.setWindow(window);
    world.fitToWindow();
}

void seedRandom() {
    int seed = Config::getInstance().getRandomSeed();
    if (seed == 0)
        seed = Outside::getInstance().ask(Channel::SEED,
                                          [] { return static_cast<int>(std::time(nullptr)); });
    if (seed == unseeded)
        return;
    logLine(10, "GameManager()::startUp(): srand() seed with %d", seed);
    std::srand(static_cast<unsigned>(seed));
}

} // namespace

GameManager &GameManager::getInstance() {
    static GameManager &instance = *new GameManager;
    return instance;
}

GameManager::GameManager() {
    setType("GameManager");
}

bool GameManager::isValid(const std::string &event_type) const {
    return event_type == STEP_EVENT;
}

int GameManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    platform::openStandardDescriptors();
    platform::catchStopSignals();
    [[maybe_unused]] static const int registered = std::atexit([] { getInstance().endAtExit(); });
    if (is_start_failed)
        shutDown();
    is_start_failed = true; // Until all of it has been done.
    is_stop_wanted = false;
    is_stopped_by_run = false;
    if (prepareRecords() != 0)
        return -1;
    Config &config = Config::getInstance();
    config.loadConfig("");
    beginRecords();
    LogManager &log = LogManager::getInstance();
    if (log.startUp() != 0)
        return failStart("log");
    logBanner();
    config.printConfig();
    logWorkingDirectory();
    logLine(1, "Log Manager started.");
    frame_time = config.getFrameTime();
    logLine(5, "GameManager::startUp(): frame time is %d", frame_time);

    if (startManagers() != 0)
        return -1;
    fitWorldToWindow();
    seedRandom();
    Desk::getInstance().startUp();
    if (platform::timeSource().beginTimerPeriod(timer_period_ms) == platform::timer_period_refused)
        logLine(1, "GameManager()::startUp(): Warning!  timeBeginPeriod() cannot accept 1 msec.");
    setGameOver(false);
    is_start_failed = false;
    Manager::startUp();
    logLine(1, "GameManager successfully started.");
    return 0;
}

void GameManager::reset() {
    setGameOver(false);
    setStepCount(0);
    frame_time = default_frame_time;
    warned_nested_run = false;
    platform::forgetStopSignal();
}

int GameManager::startManagers() {
    for (const Managed &managed : managedInOrder()) {
        if (!isWanted(managed))
            continue;
        if (managed.manager.startUp() != 0)
            return failStart(managed.name);
        logLine(1, "%s manager started.", managed.capitalized_name);
    }
    return 0;
}

void GameManager::shutDown() {
    if (is_stopping)
        return; // A destructor asks for it while it is being done.
    setGameOver();
    if (ObjectWatch::isAny())
        is_stop_wanted = true;
    else if (!std::exchange(is_stopped_by_run, false))
        stopManagers();
}

/// At the end of the process no handler runs any more, even if one has called exit(), as the
/// display manager does without a display, and no run() does what it has asked for.
void GameManager::endAtExit() {
    ObjectWatch::endAll();
    const bool is_lost = DisplayManager::getInstance().isLost();
    if (is_stop_wanted || (is_lost && LogManager::getInstance().isStarted()))
        stopManagers();
}

void GameManager::stopManagers() {
    const RaisedFlag stopping(is_stopping);
    is_stop_wanted = false;
    is_start_failed = false;
    Desk::getInstance().shutDown();
    LogManager &log = LogManager::getInstance();
    if (platform::timeSource().endTimerPeriod(timer_period_ms) == platform::timer_period_refused)
        logLine(1, "GameManager()::shutDown(): Warning! timeEndPeriod() cannot accept 1 msec.");

    const auto managers = managedInOrder();
    for (auto managed = managers.rbegin(); managed != managers.rend(); ++managed) {
        if (!isWanted(*managed))
            continue;
        managed->manager.shutDown();
        logLine(1, "%s manager stopped", managed->capitalized_name);
    }
    logLine("%s", ruler);
    logLine("** Game engine stopped **");
    log.shutDown();
    Manager::shutDown();
    platform::releaseStopSignals();
    WorldManager::getInstance().setWindow({});
}

void GameManager::run() {
    if (!isStarted()) {
        logFailure(
            "GameManager::run(): Error! The engine is not started. Does startUp() return 0?");
        return;
    }
    if (ObjectWatch::isAny()) {
        if (!std::exchange(warned_nested_run, true))
            logFailure("GameManager::run(): Error! Called from a handler, draw() or destructor of "
                       "an object. Ignored. The loop that called it goes on.");
        return;
    }
    // A handler that calls exit() never returns. Destructors of globals that run after this may
    // stop the engine; endAtExit() does it for the others.
    [[maybe_unused]] static const int registered = std::atexit(ObjectWatch::endAll);
    if (!is_stop_wanted)
        runLoop();
    if (is_stop_wanted) {
        stopManagers();
        is_stopped_by_run = true;
    }
}

void GameManager::runLoop() {
    Clock clock;
    logLine(1, "GameManager::run(): starting game loop");
    setGameOver(false);
    setStepCount(0);
    FramePace pace(frame_time);
    do
        runStep(clock, pace);
    while (!game_over);
    logLine(1, "GameManager::run(): end of game loop");
}

void GameManager::runStep(Clock &clock, FramePace &pace) {
    Desk &desk = Desk::getInstance();
    clock.delta();
    const EventStep step(step_count);
    onEvent(&step);
    desk.endPiece(Piece::EVENTS);
    DisplayManager::getInstance().swapBuffers();
    desk.endPiece(Piece::DRAWING);
    if (platform::stopSignal() != 0)
        Replayer::getInstance().stop(); // Ends with the game, as if it were live.
    InputManager::getInstance().getInput();
    if (Config::getInstance().getNetworking()) {
        serviceNetwork(clock, pace);
        NetworkManager::getInstance().endStep();
    }
    desk.endPiece(Piece::EVENTS);
    WorldManager &world = WorldManager::getInstance();
    world.update();
    desk.endPiece(Piece::WORLD);
    world.draw();
    desk.endPiece(Piece::DRAWING);
    PathManager::getInstance().cycle(pace.pathBudget(clock.split()));
    desk.endPiece(Piece::PATHS);
    pace.endStep(clock, step_count);
    desk.endPiece(Piece::SLEEP);
    setStepCount(step_count + 1);
    Recorder::getInstance().endStep();
    Replayer::getInstance().endStep();
}

void GameManager::serviceNetwork(const Clock &clock, const FramePace &pace) {
    NetworkManager &network = NetworkManager::getInstance();
    if (network.isServer())
        network.accept();
    const int begin = clock.split();
    const std::int64_t deadline = begin + pace.networkBudget();
    while (true) {
        bool any_sent = false;
        for (int i = 0; i < network.getNumConnections(); ++i)
            any_sent |= network.genDataEvents(i) > 0;
        if (!any_sent)
            return;
        const int split = clock.split();
        // A clock set back meanwhile would postpone the deadline, so treat it as reached.
        if (split >= deadline || split < begin) {
            logLine("GameManager::run(): Warning! Residual network data.");
            return;
        }
    }
}

void GameManager::setGameOver(bool new_game_over) {
    game_over = new_game_over;
    SceneGraph::setGameOver(new_game_over);
}

int GameManager::getExitStatus() {
    if (const int signal = platform::stopSignal(); signal != 0)
        return status_of_signals + signal;
    return DisplayManager::getInstance().isLost() ? platform::display_lost_status : 0;
}

void GameManager::setStepCount(int new_step_count) {
    step_count = new_step_count;
    LogManager::getInstance().setStepCount(new_step_count);
}

} // namespace sv
