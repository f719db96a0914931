// Sound and music: 1 to 3 play effects, M begins and ends the music, the arrows change the volume
// of the effects, and V gives them one voice or four. On a machine without sound nothing is heard,
// and all else goes on.

#include "selvane/selvane.h"

#include <algorithm>
#include <string>
#include <vector>

sv::ResourceManager &resources() {
    return sv::ResourceManager::getInstance();
}

const std::vector<std::string> effects = {"shot", "boom", "coin"};

class Mixer : public sv::Object {
  public:
    Mixer() {
        setType("Mixer");
        setPosition({20, 8});
        registerInterest(sv::KEYBOARD_EVENT);
    }

    int draw() override {
        const std::string lines[] = {
            "1, 2, 3  play " + effects[0] + ", " + effects[1] + ", " + effects[2],
            "M        " + std::string(has_music ? "ends" : "begins") + " the music",
            "Up, down volume " + std::to_string(volume),
            "V        voices " + std::to_string(voices),
            "         last played: " + last,
        };
        int result = 0;
        sv::Vector at = getPosition();
        for (const std::string &line : lines) {
            result += sv::DisplayManager::getInstance().drawString(at, line);
            at.y += 2;
        }
        return result;
    }

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (!p_key || p_key->getKeyboardAction() != sv::KEY_PRESSED)
            return Object::eventHandler(p_event);
        press(p_key->getKey());
        return 1;
    }

  private:
    void press(sv::Keyboard::Key key) {
        if (key >= sv::Keyboard::NUM1 && key <= sv::Keyboard::NUM3)
            playEffect(effects[static_cast<std::size_t>(key - sv::Keyboard::NUM1)]);
        else if (key == sv::Keyboard::M)
            switchMusic();
        else if (key == sv::Keyboard::UPARROW)
            change(std::min(volume + 20, 100), voices);
        else if (key == sv::Keyboard::DOWNARROW)
            change(std::max(volume - 20, 0), voices);
        else if (key == sv::Keyboard::V)
            change(volume, voices == 1 ? 4 : 1);
    }

    void playEffect(const std::string &name) {
        sv::play(resources().getSound(name));
        last = name;
    }

    void switchMusic() {
        has_music = !has_music;
        if (has_music)
            sv::play(resources().getMusic("tune"), true); // Over and over.
        else
            sv::stop(resources().getMusic("tune"));
    }

    /// With one voice an effect starts over when it is played again; with four it overlaps.
    void change(int new_volume, int new_voices) {
        volume = new_volume;
        voices = new_voices;
        for (const std::string &name : effects) {
            resources().getSound(name)->setVolume(static_cast<float>(volume));
            resources().getSound(name)->setVoices(voices);
        }
    }

    bool has_music = false;
    int volume = 100;
    int voices = 1;
    std::string last = "nothing";
};

/// 0, or -1 with the reason in the log.
int loadSounds() {
    for (const std::string &name : effects)
        if (resources().loadSound("sounds/" + name + ".wav", name) != 0)
            return -1;
    return resources().loadMusic("sounds/tune.wav", "tune");
}

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_ready = game.startUp() == 0 && loadSounds() == 0;
    if (is_ready) {
        sv::spawn<Mixer>();
        game.run();
    }
    game.shutDown();
    return is_ready ? 0 : 1;
}
