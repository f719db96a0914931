#include "selvane/core/LogManager.h"
#include "selvane/resources/Music.h"
#include "selvane/resources/Sound.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waveFile.h"

#include <algorithm>
#include <vector>

namespace {

class Silence : public test::EngineTest {
  protected:
    Silence() { startLog(); }
};

} // namespace

TEST_F(Silence, a_machine_without_a_device_is_told_once_and_stays_silent) {
    writeFile("beep.wav", test::waveFile(std::vector<std::int16_t>(800, 9000)));
    test::setEnvironment("ALSOFT_DRIVERS", "there-is-none");
    test::CapturedErrors errors;
    {
        std::vector<sv::Sound> sounds(100);
        std::vector<sv::Music> tracks(50);
        for (sv::Sound &sound : sounds) {
            ASSERT_EQ(sound.loadSound("beep.wav"), 0);
            sound.play(true);
        }
        for (sv::Music &track : tracks) {
            ASSERT_EQ(track.loadMusic("beep.wav"), 0);
            track.play(true);
        }
        sounds[0].stop();
        tracks[0].stop();
    }
    const std::string on_screen = errors.take();
    EXPECT_LT(std::count(on_screen.begin(), on_screen.end(), '\n'), 20);
    EXPECT_EQ(logText(), "hasAudioDevice(): Note! No audio device can be opened. Sounds and music "
                         "stay silent.\n");
}

TEST_F(Silence, an_unknown_label_plays_nothing) {
    sv::LogManager::getInstance().setLogLevel(5);
    sv::play(static_cast<sv::Sound *>(nullptr));
    sv::play(static_cast<sv::Music *>(nullptr), true);
    sv::stop(nullptr);
    EXPECT_EQ(logText(), "");
}
