// A game whose globals use the engine before main() and after it. The environment variable
// SELVANE_TEST_WAY says which of them do what.

#include "selvane/core/Config.h"
#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/world/Object.h"

#include <cstdlib>
#include <memory>
#include <string>

namespace {

const std::string way = std::getenv("SELVANE_TEST_WAY");

sv::GameManager &game() {
    return sv::GameManager::getInstance();
}

sv::ResourceManager &resources() {
    return sv::ResourceManager::getInstance();
}

/// A sound and ten tracks, to be cut off by the end of the process.
void startMusic() {
    resources().loadSound("beep.wav", "beep");
    resources().getSound("beep")->play(true);
    for (const std::string label : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
        resources().loadMusic("beep.wav", label);
        resources().getMusic(label)->play(true);
    }
}

/// When the audio device is gone already.
void playOn() {
    resources().getSound("beep")->play();
    resources().getMusic("0")->stop();
    resources().getMusic("0")->play(true);
    if (resources().loadMusic("beep.wav", "late") != -1 ||
        resources().loadSound("missing.wav", "late") != -1)
        std::_Exit(5);
}

/// Reads a text with its last breath, as the kept parse of all texts goes.
struct Reader : sv::Object {
    Reader() { registerInterest(sv::STEP_EVENT); }
    ~Reader() override { deserialize("pos-x:1,pos-y:2,"); }
    int eventHandler(const sv::Event * /*p_event*/) override {
        if (game().getStepCount() < 20)
            return 1;
        game().setGameOver();
        if (way == "exit")
            std::exit(0);
        return 1;
    }
};

struct Engine {
    Engine() {
        sv::Config::getInstance().loadConfig("headless:true,frame_time:1,");
        if (way == "engine")
            game().startUp();
    }
    ~Engine() {
        if (way == "exit")
            playOn();
        game().shutDown();
        sv::LogManager::getInstance().writeLog("last words");
    }
} engine;

sv::Object early; // Made before the engine starts, unless the one above starts it.
std::unique_ptr<sv::Object> late;

} // namespace

int main() {
    if (way == "atexit")
        std::atexit([] { game().shutDown(); });
    if (!game().isStarted() && game().startUp() != 0)
        return 1;
    if (way == "exit")
        startMusic();
    if (way == "late")
        late = std::make_unique<Reader>();
    else
        new Reader;
    game().run();
}
