// What a log line costs, in lines a second into a file: as a game begins, and with setFlush(),
// which also checks whether the log was deleted.

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"

#include <benchmark/benchmark.h>
#include <filesystem>

namespace {

void line(benchmark::State &state) {
    const auto file = std::filesystem::temp_directory_path() / "selvane_log_bench.log";
    sv::Config::getInstance().loadConfig("logfile:" + file.string() + ",");
    sv::LogManager &log = sv::LogManager::getInstance();
    if (log.startUp() != 0)
        state.SkipWithError("the log cannot be opened");
    log.setFlush(state.range(0) != 0);
    for ([[maybe_unused]] auto _ : state)
        sv::logLine("Saucer::eventHandler(): at (%.2f, %.2f) in %s", 40.25, 12.5, "the middle");
    state.SetItemsProcessed(state.iterations());
    log.shutDown();
    std::filesystem::remove(file);
}

BENCHMARK(line)->ArgName("setFlush")->Arg(0)->Arg(1);

} // namespace
