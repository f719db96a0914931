/// A working folder and an environment of its own for each test, and what the engine said.
///
/// The log file is "selvane.log" in that folder, every line flushed and without its prefixes.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

namespace test {

class EngineTest : public testing::Test {
  protected:
    EngineTest();
    ~EngineTest() override;

    /// Makes the log write lines up to that level, for a test that does not open it itself.
    static void prepareLog(int level = 0);

    /// Prepares the log and opens it, with nothing in it.
    static void startLog(int level = 0);

    /// What stands in the log file, by lines.
    static std::vector<std::string> logLines();
    static std::string logText();

    /// What the log file gained since the last call.
    std::string said();

    /// How many lines of the log are exactly that text.
    static int logCount(const std::string &line);

    /// Expects each of these lines once in the log.
    static void expectLogged(std::initializer_list<std::string> lines);

    static void writeFile(const std::string &name, const std::string &content);

  private:
    std::filesystem::path folder;
    std::size_t said_before = 0; // Characters of the log that said() has returned.
};

/// What goes to standard error meanwhile.
template<typename Action>
std::string errorsOf(const Action &action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

} // namespace test
