#include "selvane/record/recordSettings.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/attributes.h"
#include "selvane/core/text.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/outside/Outside.h"
#include "selvane/record/Cast.h"
#include "selvane/record/Recorder.h"
#include "selvane/record/Replayer.h"
#include "selvane/resources/audioDevice.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

namespace sv {

namespace {

std::string variable(const char *name) {
    const char *value = std::getenv(name);
    return value ? value : "";
}

/// The replay that the environment asks for.
class AskedReplay {
  public:
    explicit AskedReplay(const std::string &options)
        : headless(attributeValue(options, "headless") == "true"),
          live(attributeValue(options, "live") == "true"),
          last_step(parseInt(attributeValue(options, "last_step"))),
          report(variable(REPLAY_REPORT_VARIABLE)), film(variable(REPLAY_FILM_VARIABLE)) {
        const std::string range = attributeValue(options, "screen");
        const std::size_t dash = range.find('-');
        first_screen = parseInt(range);
        last_screen = dash == std::string::npos ? first_screen : parseInt(range.substr(dash + 1));
    }

    ReplayOptions options() {
        return {.is_fast = headless,
                .last_step = last_step,
                .after_step = [this](int step) { show(step); },
                .at_input = [this](const InputItem &item) { take(item); },
                .at_end = [this](const ReplayVerdict &verdict) { end(verdict); }};
    }

    bool isHeadless() const { return headless; }

  private:
    void show(int step) {
        if (first_screen <= step && step <= last_screen)
            std::printf("-- step %d\n%s\n", step, screenText().c_str());
        if (film.empty())
            return;
        const Config &config = Config::getInstance();
        if (!cast)
            cast = std::make_unique<Cast>(film, config.getWindowHorizontalChars(),
                                          config.getWindowVerticalChars());
        cast->add(step * config.getFrameTime(), screenText(), screenColors());
    }

    /// A closed window ends the replay, and the game.
    void take(const InputItem &item) {
        if (item.kind != InputItem::Kind::WINDOW_CLOSED)
            return;
        live = false;
        Replayer::getInstance().endWithStep();
    }

    /// The process ends with the replay, unless the game is to go on.
    void end(const ReplayVerdict &verdict) {
        int status = verdict.is_same ? 0 : 1;
        std::string text = verdict.changes.empty() ? "" : verdict.changes + "\n";
        text += verdict.text + "\n";
        if (first_screen > verdict.steps)
            text += "No screen is shown: it has no step " + std::to_string(first_screen) + "\n";
        if (cast && !cast->isGood()) {
            text += "The film '" + printable(film) + "' could not be written\n";
            status = 2;
        }
        cast.reset();
        if (report.empty())
            std::fputs(text.c_str(), stdout);
        else
            std::ofstream(report) << status << "\n" << text;
        if (!verdict.is_at_exit && !(live && verdict.is_same))
            std::exit(status);
    }

    bool headless;
    bool live;
    int last_step;
    std::string report;
    std::string film;
    int first_screen = 0;
    int last_screen = 0;
    std::unique_ptr<Cast> cast;
};

/// Settings and environment count once in a process: when the engine is started again, a record
/// under way goes on, and one that has ended is left alone.
enum class Start { FIRST, UNDER_WAY, LATER };
Start start = Start::FIRST;
std::unique_ptr<AskedReplay> asked;
bool is_recording_asked_for = false;

} // namespace

int prepareRecords() {
    start = start == Start::FIRST ? Start::UNDER_WAY : Start::LATER;
    Outside::getInstance().takeThread();
    const std::string file = start == Start::UNDER_WAY ? variable(REPLAY_VARIABLE) : "";
    Recorder::getInstance().prepare();
    if (file.empty())
        return 0;
    if (!variable(RECORD_VARIABLE).empty())
        logLine("prepareRecords(): Note! A record is played, so none is written.");
    auto replay = std::make_unique<AskedReplay>(variable(REPLAY_OPTIONS_VARIABLE));
    const int result = Replayer::getInstance().start(file, replay->options());
    asked = std::move(replay);
    return result;
}

void beginRecords() {
    Config &config = Config::getInstance();
    std::string file = variable(RECORD_VARIABLE);
    if (file.empty())
        file = config.getRecordFile();
    Recorder &recorder = Recorder::getInstance();
    const bool is_new = !recorder.isRecording();
    recorder.begin(start == Start::UNDER_WAY ? file : "");
    if (is_new)
        is_recording_asked_for = recorder.isRecording();
    DisplayManager &display = DisplayManager::getInstance();
    const bool is_shown = Outside::getInstance().ask(
        Channel::CONFIG, [&] { return !config.getHeadless() || display.getCapture() != nullptr; });
    if (!Replayer::getInstance().isReplaying())
        return;
    display.setShownInRecord(is_shown);
    if (asked && asked->isHeadless()) {
        config.loadConfig("headless:true,");
        setSoundWanted(false);
    }
}

bool isWholeGameRecorded() {
    return (is_recording_asked_for && Recorder::getInstance().isRecording()) ||
           (asked && Replayer::getInstance().isReplaying());
}

void resetRecords() {
    Recorder::getInstance().endGame();
    Replayer::getInstance().endGame();
    start = Start::FIRST;
    is_recording_asked_for = false;
    asked.reset();
}

} // namespace sv
