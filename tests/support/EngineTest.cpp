#include "support/EngineTest.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/desk/Desk.h"
#include "support/environment.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <utility>

namespace test {

namespace {

std::filesystem::path makeFolder() {
    std::random_device random;
    while (true) {
        auto folder = std::filesystem::temp_directory_path() /
                      ("selvane-test-" + std::to_string(random()) + std::to_string(random()));
        if (std::filesystem::create_directory(folder))
            return folder;
    }
}

} // namespace

EngineTest::EngineTest() : folder(makeFolder()) {
    std::filesystem::current_path(folder);
    for (const char *name : {sv::LOG_FILE_VARIABLE, sv::LOG_LEVEL_VARIABLE,
                             sv::CONFIG_FILE_VARIABLE, sv::DESK_VARIABLE})
        clearEnvironment(name);
}

EngineTest::~EngineTest() {
    sv::LogManager &log = sv::LogManager::getInstance();
    if (log.isStarted())
        log.shutDown(); // Some systems keep a folder whose files are open.
    std::filesystem::current_path(folder.parent_path());
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void EngineTest::prepareLog(int level) {
    sv::LogManager &log = sv::LogManager::getInstance();
    log.setLogLevel(level);
    log.setLogTimeString(false);
    log.setLogStepCount(false);
    log.setFlush(true);
}

void EngineTest::startLog(int level) {
    prepareLog(0);
    ASSERT_EQ(sv::LogManager::getInstance().startUp(), 0);
    prepareLog(level);
}

std::string EngineTest::logText() {
    std::ifstream file("selvane.log");
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string EngineTest::said() {
    const std::string text = logText();
    const std::size_t before = std::min(std::exchange(said_before, text.size()), text.size());
    return text.substr(before);
}

std::vector<std::string> EngineTest::logLines() {
    std::istringstream text(logText());
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

int EngineTest::logCount(const std::string &line) {
    const auto lines = logLines();
    return static_cast<int>(std::count(lines.begin(), lines.end(), line));
}

void EngineTest::expectLogged(std::initializer_list<std::string> lines) {
    for (const std::string &line : lines)
        EXPECT_EQ(logCount(line), 1) << line;
}

void EngineTest::writeFile(const std::string &name, const std::string &content) {
    std::ofstream(name, std::ios::binary) << content;
}

} // namespace test
