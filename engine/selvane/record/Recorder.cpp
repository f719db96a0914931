#include "selvane/record/Recorder.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/outside/Outside.h"
#include "selvane/outside/packing.h"
#include "selvane/record/Replayer.h"
#include "selvane/record/recordSettings.h"

#include <cstdlib>
#include <utility>

namespace sv {

namespace {

Outside &outside() {
    return Outside::getInstance();
}

} // namespace

Recorder &Recorder::getInstance() {
    static Recorder &instance = *new Recorder;
    return instance;
}

int Recorder::start(const std::string &filename) {
    if (isWholeGameRecorded())
        return logFailure(
            "Recorder::start(): Error! The whole game is recorded or played already.");
    if (Replayer::getInstance().isReplaying())
        return logFailure("Recorder::start(): Error! A record is being played.");
    stop();
    outside().setMode(Outside::Mode::RECORDING);
    if (open(filename, true) != 0)
        return -1;
    std::srand(static_cast<unsigned>(outside().ask(Channel::SEED, std::rand)));
    return 0;
}

void Recorder::prepare() {
    if (outside().getMode() == Outside::Mode::LIVE)
        outside().setMode(Outside::Mode::RECORDING);
}

void Recorder::begin(const std::string &filename) {
    if (isRecording() || outside().isReplaying())
        return;
    if (filename.empty())
        outside().setMode(Outside::Mode::LIVE);
    else
        open(filename, false);
}

/// What is on the tape already belongs to the first step.
int Recorder::open(const std::string &filename, bool is_game_running) {
    [[maybe_unused]] static const int registered = std::atexit([] { getInstance().endGame(); });
    name = filename;
    writer = std::make_unique<RecordWriter>(filename);
    state = std::make_unique<WorldState>();
    std::string bytes;
    packText(bytes, recordVersion());
    packNumber(bytes, is_game_running ? 1 : 0);
    writer->write(BlockKind::BEGIN, bytes + state->update());
    if (writer->isGood())
        return 0;
    close("cannot be opened for writing");
    return -1;
}

void Recorder::endStep() {
    if (!isRecording())
        return;
    Tape &tape = outside().getTape();
    writer->write(BlockKind::STEP, tape.pack() + state->update());
    tape.clear();
    if (!writer->isGood())
        close("cannot be written any more");
}

void Recorder::stop() {
    if (!isRecording())
        return;
    writer->write(BlockKind::STOP, "");
    close(nullptr);
}

void Recorder::endGame() {
    if (!isRecording())
        return;
    writer->write(BlockKind::EXIT, outside().getTape().pack());
    close(nullptr);
}

void Recorder::close(const char *why) {
    writer.reset();
    state.reset();
    outside().setMode(Outside::Mode::LIVE);
    if (why)
        logFailure("Recorder: Error! The record '%s' %s. Nothing is recorded from here on.",
                   printable(name).c_str(), why);
}

} // namespace sv
