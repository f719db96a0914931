#include "selvane/testing/EngineState.h"

#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/record/recordSettings.h"
#include "selvane/resources/audioDevice.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>

namespace sv {

namespace {

std::filesystem::path newFileName() {
    std::random_device random;
    return std::filesystem::temp_directory_path() /
           ("selvane-session-" + std::to_string(random()) + std::to_string(random()) + ".log");
}

LogManager &log() {
    return LogManager::getInstance();
}

} // namespace

/// The random numbers of after the session hang on those of before it alone.
EngineState::EngineState()
    : folder(std::filesystem::current_path()), config(Config::getInstance()),
      input(InputManager::getInstance().getSource()),
      is_captured(DisplayManager::getInstance().getCapture() != nullptr),
      next_seed(static_cast<unsigned>(std::rand())), log_level(log().getLogLevel()),
      has_time_string(log().getLogTimeString()), has_step_count(log().getLogStepCount()),
      does_flush(log().getFlush()), log_file(newFileName()) {
    log().setForcedFile(log_file.string());
    log().setLogTimeString(false);
    log().setLogStepCount(false);
    log().setFlush(false);
    captureScreen();
    setSoundWanted(false);
}

EngineState::~EngineState() {
    GameManager &game = GameManager::getInstance();
    if (game.isStarted() || log().isStarted())
        game.shutDown();
    resetRecords();
    Manager::resetAll();
    restoreLog();
    setSoundWanted(true);
    captureScreen(is_captured);
    InputManager::getInstance().setSource(&input);
    Config::getInstance() = config;
    std::error_code ignored;
    std::filesystem::current_path(folder, ignored);
    std::srand(next_seed);
}

std::string EngineState::logText() const {
    std::ifstream file(log_file);
    return {std::istreambuf_iterator<char>(file), {}};
}

void EngineState::restoreLog() const {
    log().setForcedFile("");
    log().setLogLevel(log_level);
    log().setLogTimeString(has_time_string);
    log().setLogStepCount(has_step_count);
    log().setFlush(does_flush);
    std::error_code ignored;
    std::filesystem::remove(log_file, ignored);
}

} // namespace sv
