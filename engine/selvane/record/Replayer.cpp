#include "selvane/record/Replayer.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/input/InputManager.h"
#include "selvane/outside/Outside.h"
#include "selvane/outside/packing.h"
#include "selvane/record/Recorder.h"
#include "selvane/record/recordSettings.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

namespace sv {

namespace {

Outside &outside() {
    return Outside::getInstance();
}

/// What the game asks, in the order of Channel.
constexpr std::array<const char *, CHANNEL_COUNT> questions = {
    "for the time", "for a seed", "for the settings", "for files", "for input", "the network"};

/// 1204 becomes "1,204".
std::string grouped(int number) {
    std::string digits = std::to_string(number);
    for (auto at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3)
        digits.insert(static_cast<std::size_t>(at), 1, ',');
    return digits;
}

std::string stepCount(int steps) {
    return grouped(steps) + (steps == 1 ? " step" : " steps");
}

} // namespace

Replayer &Replayer::getInstance() {
    static Replayer &instance = *new Replayer;
    return instance;
}

int Replayer::start(const std::string &filename, const ReplayOptions &new_options) {
    [[maybe_unused]] static const int registered = std::atexit([] { getInstance().endGame(true); });
    if (isWholeGameRecorded())
        return logFailure(
            "Replayer::start(): Error! The whole game is recorded or played already.");
    stop();
    Recorder::getInstance().stop();
    ++started;
    record = std::make_unique<RecordedGame>(filename);
    options = new_options;
    steps = 0;
    InputManager::getInstance().setUnheardListener(options.at_input);
    actual = std::make_unique<WorldState>();
    outside().setMode(Outside::Mode::REPLAYING, options.is_fast);
    if (record->getVersion() != recordVersion())
        outside().noteChange("the engine's version (" + recordVersion() + ", recorded " +
                             printable(record->getVersion()) + ")");
    loadNext();
    if (after != Next::STEP)
        return refuse(filename);
    if (record->isOfRunningGame())
        std::srand(static_cast<unsigned>(outside().ask(Channel::SEED, [] { return 0; })));
    return 0;
}

int Replayer::refuse(const std::string &filename) {
    const char *problem = record->isOpen() ? "has no whole step" : record->getProblem();
    const int failure = logFailure("Replayer::start(): Error! The record '%s' %s.",
                                   printable(filename).c_str(), problem);
    stop();
    return failure;
}

/// The tape gets the next step's answers.
void Replayer::loadNext() {
    after = record->next();
    outside().getTape() = record->takeTape();
}

void Replayer::endStep() {
    if (!isReplaying())
        return;
    if (after == Next::EXIT)
        return finish(false, "goes on where the recorded game ended");
    if (const std::string different = difference(); !different.empty())
        return finish(false, "differs: " + different);
    ++steps;
    const int current = started;
    if (const auto after_step = options.after_step) // A copy: another record may be started there.
        after_step(steps);
    if (!isReplaying() || started != current)
        return;
    loadNext();
    if (steps == options.last_step || after == Next::STOP || after == Next::CUT)
        finish(true, "");
    else if (after == Next::DAMAGE)
        finish(false, "is damaged in the record");
}

/// What the step has done otherwise than recorded; empty if nothing.
std::string Replayer::difference() {
    if (!options.is_checked)
        return "";
    actual->update();
    if (const auto found = actual->findDifference(record->getWorld()))
        return *found;
    const auto mismatch = outside().getTape().findMismatch();
    if (!mismatch)
        return "";
    return std::string("it asked ") + questions[static_cast<std::size_t>(*mismatch)] +
           " more often or less often than recorded";
}

void Replayer::stop() {
    if (!isReplaying())
        return;
    record.reset();
    outside().setMode(Outside::Mode::LIVE);
    DisplayManager::getInstance().setShownInRecord(std::nullopt);
}

void Replayer::finish(bool is_same, const std::string &what, bool is_at_exit) {
    ReplayVerdict verdict;
    verdict.steps = steps;
    verdict.is_same = is_same;
    verdict.is_at_exit = is_at_exit;
    verdict.text =
        is_same ? stepCount(steps) + ", all the same" : "step " + grouped(steps + 1) + " " + what;
    if (is_same && after == Next::CUT)
        verdict.text += "; the record ends there without an end";
    for (const std::string &change : outside().getChanges())
        verdict.changes += (verdict.changes.empty() ? "not as recorded: " : ", ") + change;
    const auto at_end = std::move(options.at_end);
    stop();
    if (LogManager::getInstance().isStarted())
        logLine("Replayer: %s", verdict.text.c_str());
    if (at_end)
        at_end(verdict);
}

void Replayer::endGame(bool is_at_exit) {
    if (!isReplaying())
        return;
    if (after == Next::EXIT)
        finish(true, "", is_at_exit);
    else
        finish(false, "is missing: the game ended before it", is_at_exit);
}

} // namespace sv
