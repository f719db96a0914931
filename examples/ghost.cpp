// Records: the first race is recorded while it is run, the ghost of it runs in the second one, and
// then the first one is played again until a key is pressed. Hold the right arrow to run.

#include "selvane/record/RecordedGame.h"
#include "selvane/record/Recorder.h"
#include "selvane/record/Replayer.h"
#include "selvane/selvane.h"

#include <filesystem>
#include <random>

/// In the folder for what nobody keeps.
const std::string first_race = (std::filesystem::temp_directory_path() /
                                ("race-" + std::to_string(std::random_device()()) + ".record"))
                                   .string();
constexpr float finish_line = 70;

class Runner : public sv::Object {
  public:
    explicit Runner(const std::string &new_title) : title(new_title) {
        setType("Runner");
        setPosition({2, 12});
        registerInterest(sv::KEYBOARD_EVENT);
    }

    int draw() override {
        auto &display = sv::DisplayManager::getInstance();
        display.drawString({40, 2}, title, sv::CENTER_JUSTIFIED, sv::WHITE);
        display.drawString({finish_line, 12}, "|", sv::LEFT_JUSTIFIED, sv::GREEN);
        return display.drawCh(getPosition(), '@', sv::YELLOW);
    }

    int eventHandler(const sv::Event *p_event) override {
        const auto *key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (!key || key->getKey() != sv::Keyboard::RIGHTARROW)
            return Object::eventHandler(p_event);
        setPosition(getPosition() + sv::Vector{sv::randomFloat(0, 2), 0});
        if (getPosition().x >= finish_line)
            sv::GameManager::getInstance().setGameOver();
        return 1;
    }

  private:
    std::string title;
};

/// Goes where the runner of the first race went.
class Ghost : public sv::Object {
  public:
    Ghost() {
        setSolidness(sv::SPECTRAL);
        registerInterest(sv::STEP_EVENT);
    }

    int eventHandler(const sv::Event * /*p_event*/) override {
        race.next(); // After its end the runner stays where it was.
        return 1;
    }

    int draw() override {
        for (const auto &[object, state] : race.getWorld().getObjects())
            if (state.get(sv::StateText::TYPE) == "Runner")
                sv::DisplayManager::getInstance().drawCh(state.getPosition(), 'o', sv::CYAN);
        return 0;
    }

  private:
    sv::RecordedGame race{first_race};
};

/// False if the window was closed.
bool race(const std::string &title, bool has_ghost = false) {
    sv::WorldManager::getInstance().retireAll(); // Who ran the race before.
    sv::spawn<Runner>(title);
    if (has_ghost)
        sv::spawn<Ghost>();
    sv::GameManager::getInstance().run();
    return !sv::InputManager::getInstance().isWindowClosed();
}

/// The record answers what the engine asks the keyboard, so the keys of whoever watches come apart.
bool showFirstRace() {
    bool is_key_pressed = false;
    sv::ReplayOptions options;
    options.is_checked = false; // It is shown, not proven.
    options.at_input = [&](const sv::InputItem & /*item*/) {
        is_key_pressed = true;
        sv::Replayer::getInstance().stop();
        sv::GameManager::getInstance().setGameOver();
    };
    if (sv::Replayer::getInstance().start(first_race, options) != 0)
        return false;
    return race("The first race again - press a key") && !is_key_pressed;
}

void play() {
    sv::Recorder::getInstance().start(first_race);
    const bool goes_on = race("The first race");
    sv::Recorder::getInstance().stop();
    if (!goes_on)
        return;
    if (!race("Beat the ghost of the first race", true))
        return;
    while (showFirstRace()) {
    }
}

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_started = game.startUp() == 0;
    if (is_started)
        play();
    game.shutDown();
    std::filesystem::remove(first_race);
    return is_started ? 0 : 1;
}
