#include "selvane/resources/Music.h"
#include "selvane/resources/Sound.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waitUntil.h"
#include "support/waveFile.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

namespace {

constexpr int samples_per_second = 8000;
constexpr double beep_seconds = 0.05;

struct Playing : test::EngineTest {
    Playing() {
        startLog();
        std::vector<std::int16_t> beep(static_cast<std::size_t>(beep_seconds * samples_per_second));
        for (std::size_t i = 0; i < beep.size(); ++i)
            beep[i] = i % 2 == 0 ? 9000 : -9000;
        writeFile("beep.wav", test::waveFile(beep, samples_per_second));
        // OpenAL writes what it plays to a file, by its user's settings.
        writeFile("alsoft.conf", "[general]\ndrivers = wave\n[wave]\nfile = played.wav\n");
        test::setEnvironment("ALSOFT_CONF", "alsoft.conf");
    }

    /// Waits until that many more seconds were played, silence included.
    static bool waitForPlayed(double seconds) {
        const double wanted = secondsPlayed() + seconds;
        return test::waitUntil([&] { return secondsPlayed() >= wanted; });
    }

    static bool waitForHeard(double seconds) {
        return test::waitUntil([&] { return heard() >= seconds; });
    }

    static double lengthOf(std::size_t values) {
        return static_cast<double>(values) / (2.0 * 44100);
    }

    static double secondsPlayed() { return lengthOf(valuesPlayed()); }

    /// The file as stereo floats, its header included: too short to matter.
    static std::vector<float> played() {
        std::vector<float> values(valuesPlayed());
        std::ifstream("played.wav", std::ios::binary)
            .read(reinterpret_cast<char *>(values.data()),
                  static_cast<std::streamsize>(values.size() * sizeof(float)));
        return values;
    }

    static std::size_t valuesPlayed() {
        std::error_code none_yet;
        const auto bytes = std::filesystem::file_size("played.wav", none_yet);
        return none_yet ? 0 : bytes / sizeof(float);
    }

    /// Seconds of what was played that are not silence.
    static double heard() {
        const auto values = played();
        return lengthOf(values.size() - static_cast<std::size_t>(std::ranges::count(values, 0.0F)));
    }
};

} // namespace

TEST_F(Playing, sounds_and_music_play_once_or_loop) {
    for (int i = 0; i < 4; ++i) {
        const bool is_music = i >= 2;
        const bool loop = i % 2 != 0;
        SCOPED_TRACE(i);
        sv::Sound sound;
        sv::Music music;
        ASSERT_EQ(sound.loadSound("beep.wav"), 0);
        ASSERT_EQ(music.loadMusic("beep.wav"), 0);
        ASSERT_TRUE(waitForPlayed(0.05));
        if (is_music)
            play(&music, loop);
        else
            play(&sound, loop);
        EXPECT_TRUE(waitForHeard((loop ? 20 : 0.9) * beep_seconds));
        ASSERT_TRUE(waitForPlayed(2 * beep_seconds));
        EXPECT_EQ(heard() > 1.5 * beep_seconds, loop);
    }
    EXPECT_EQ(logText(), "") << "no complaint of a missing device";
}

TEST_F(Playing, stopped_sounds_fall_silent) {
    sv::Sound sound;
    sv::Music music;
    ASSERT_EQ(sound.loadSound("beep.wav"), 0);
    ASSERT_EQ(music.loadMusic("beep.wav"), 0);
    sound.play(true);
    music.play(true);
    ASSERT_TRUE(waitForHeard(2 * beep_seconds));
    sound.stop();
    stop(&music);
    ASSERT_TRUE(waitForPlayed(0.2)); // What was on its way at the stop.
    const double before = heard();
    ASSERT_TRUE(waitForPlayed(0.5));
    EXPECT_EQ(heard(), before);
}

TEST_F(Playing, short_tracks_loop) {
    // All samples are equal, so the sum shows how many tracks play.
    writeFile("level.wav", test::waveFile(std::vector<std::int16_t>(400, 500), samples_per_second));
    // One track may loop by luck even if it is set too late; so many do not.
    std::vector<sv::Music> tracks(32);
    for (sv::Music &track : tracks)
        ASSERT_EQ(track.loadMusic("level.wav"), 0);
    tracks[0].play(true);
    ASSERT_TRUE(waitForPlayed(0.2));
    const float one = played().back();
    ASSERT_GT(one, 0);
    for (std::size_t i = 1; i < tracks.size(); ++i)
        tracks[i].play(true);
    ASSERT_TRUE(waitForPlayed(0.5));
    EXPECT_TRUE(test::waitUntil([&] { return played().back() > 31.5F * one; }))
        << played().back() / one;
}

TEST_F(Playing, voices_sound_at_once_and_as_loud_as_set) {
    // All samples are equal, so the sum shows how many voices sound, and how loud.
    writeFile("level.wav", test::waveFile(std::vector<std::int16_t>(400, 500), samples_per_second));
    sv::Sound sound;
    EXPECT_EQ(sound.setVoices(0), -1);
    EXPECT_EQ(sound.setVoices(sv::MAX_VOICES + 1), -1);
    EXPECT_EQ(sound.setVolume(-1), -1);
    EXPECT_EQ(sound.setVolume(std::nanf("")), -1);
    ASSERT_EQ(sound.loadSound("level.wav"), 0);
    sound.play(true);
    ASSERT_TRUE(waitForHeard(0.2));
    const float one = played().back();
    sound.play(true);
    ASSERT_TRUE(waitForPlayed(0.5));
    EXPECT_FLOAT_EQ(played().back(), one);
    EXPECT_EQ(sound.setVoices(2), 0);
    for (int i = 0; i < 3; ++i)
        sound.play(true);
    EXPECT_TRUE(test::waitUntil([&] { return played().back() > 1.9F * one; }));
    EXPECT_EQ(sound.setVolume(25), 0);
    EXPECT_TRUE(test::waitUntil([&] { return played().back() < 0.6F * one; }));
    EXPECT_GT(played().back(), 0.4F * one);
}
