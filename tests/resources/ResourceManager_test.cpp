#include "selvane/core/LogManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/resources/audioDevice.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waveFile.h"

#include <SFML/System/Err.hpp>

#include <algorithm>
#include <filesystem>

namespace {

class Resources : public test::EngineTest {
  protected:
    Resources() {
        // OpenAL plays to nowhere, whatever this machine can do.
        test::setEnvironment("ALSOFT_DRIVERS", "null");
        startLog();
        resources.startUp();
        writeFile("spr.txt", "1\n1\n1\n0\nred\na\n");
        writeFile("spr2.txt", "1\n1\n1\n0\nblue\nb\n");
        writeFile("beep.wav", test::waveFile({1000, -1000, 1000, -1000}));
    }

    /// Has the log say before a comparison that there is no device, which it does once.
    void settleDevice() {
        sv::hasAudioDevice();
        said();
    }

    static std::string lastLine() { return logLines().back(); }

    sv::ResourceManager &resources = sv::ResourceManager::getInstance();
};

} // namespace

TEST_F(Resources, the_first_of_two_with_one_label_is_found_and_labels_are_exact) {
    EXPECT_EQ(resources.loadSprite("spr.txt", "it"), 0);
    EXPECT_EQ(resources.loadSound("beep.wav", "it"), 0);
    EXPECT_EQ(resources.loadSound("beep.wav", ""), 0);
    EXPECT_EQ(resources.loadMusic("beep.wav", "it"), 0);
    settleDevice();
    EXPECT_EQ(resources.loadSprite("spr2.txt", "it"), 0);
    EXPECT_EQ(resources.loadSound("beep.wav", "it"), 0);
    EXPECT_EQ(resources.loadMusic("beep.wav", "it"), 0);
    const std::string taken = "(): Warning! Label 'it' is taken; the first one stays.\n";
    EXPECT_EQ(said(), "RM::loadSprite(): Loading sprite 'spr2.txt'.\nRM::loadSprite" + taken +
                          "RM::loadSound" + taken + "RM::loadMusic" + taken);
    EXPECT_EQ(resources.getSprite("it")->getColor(), sv::RED);
    EXPECT_NE(resources.getSound("it"), nullptr);
    EXPECT_NE(resources.getSound(""), nullptr);
    EXPECT_NE(resources.getMusic("it"), nullptr);

    for (const std::string label : {"It", "it ", "[Undefined]"}) {
        said();
        EXPECT_EQ(resources.getSprite(label), nullptr);
        EXPECT_EQ(resources.getSound(label), nullptr);
        EXPECT_EQ(resources.getMusic(label), nullptr);
        EXPECT_EQ(said(), "RM::getSprite(): Warning! Sprite '" + label + "' not found.\n" +
                              "RM::getSound(): Warning! Sound '" + label + "' not found.\n" +
                              "RM::getMusic(): Warning! Music '" + label + "' not found.\n");
    }
}

TEST_F(Resources, a_file_that_cannot_be_read_is_refused_and_takes_no_place) {
    writeFile("noise.wav", "this is no sound");
    writeFile("cut.wav", test::waveFile({1, 2, 3, 4}).substr(0, 48));
    // A track takes memory for a second of what it claims to be.
    writeFile("fast.wav", test::waveFile({1, 2, 3, 4}, 2'000'000'000));
    writeFile("still.wav", test::waveFile({1, 2, 3, 4}, 0));
    writeFile("empty.wav", "");
    // A bit fell over in the format's name: its samples have no size.
    std::string damaged = test::waveFile({1, 2, 3, 4});
    damaged[15] = '!';
    writeFile("damaged.wav", damaged);
    // With 32 bits such a part leads to itself.
    std::string circular = test::waveFile({1, 2, 3, 4});
    circular.replace(16, 4, "\xF8\xFF\xFF\xFF");
    writeFile("circular.wav", circular);
    std::filesystem::create_directory("folder");
    for (const std::string file : {"missing/x", "empty.wav", "folder", "noise.wav", "fast.wav",
                                   "still.wav", "damaged.wav", "circular.wav", "cut.wav"}) {
        EXPECT_EQ(resources.loadSound(file, "s"), -1);
        EXPECT_EQ(lastLine(),
                  "RM::loadSound(): Error! Cannot load sound from file '" + file + "'.");
        if (file == "cut.wav")
            continue; // A track that is cut is loaded.
        EXPECT_EQ(resources.loadMusic(file, "m"), -1);
        EXPECT_EQ(lastLine(),
                  "RM::loadmusic(): Error! Cannot load music from file '" + file + "'.");
    }
    EXPECT_EQ(resources.loadMusic("beep.wav", ""), -1);
    EXPECT_EQ(lastLine(), "RM::loadMusic(): Error! Must provide label for music.");
    for (const std::string file : {"missing/x", "folder"}) {
        EXPECT_EQ(resources.loadSprite(file, "p"), -1);
        EXPECT_EQ(lastLine(), "RM::loadSprite(): Sprite 'p' not loaded.");
        expectLogged({"RM::loadSprite(): Error! Cannot open file '" + file + "'."});
    }
    EXPECT_EQ(resources.getSound("s"), nullptr);

    EXPECT_EQ(resources.loadSound("beep.wav", "s"), 0);
    EXPECT_EQ(resources.loadMusic("beep.wav", "m"), 0);
    EXPECT_NE(resources.getSound("s"), nullptr);
    EXPECT_NE(resources.getMusic("m"), nullptr);
}

TEST_F(Resources, a_sound_that_takes_too_much_memory_is_refused_before_it_takes_any) {
    std::string endless = test::waveFile({1, 2, 3, 4});
    endless.replace(40, 4, std::string("\x02\x00\x00\x02", 4)); // Bytes: one sample too many.
    writeFile("endless.wav", endless);
    settleDevice();
    EXPECT_EQ(resources.loadSound("endless.wav", "s"), -1);
    EXPECT_EQ(said(), "Sound::loadSound(): Error! 'endless.wav' has more than 16777216 samples. "
                      "Play it as music.\n"
                      "RM::loadSound(): Error! Cannot load sound from file 'endless.wav'.\n");
}

TEST_F(Resources, a_track_that_is_cut_short_is_loaded_with_a_warning) {
    const std::string whole = test::waveFile({1, 2, 3, 4});
    std::string half_a_frame = test::waveFile({1, 2, 3});
    half_a_frame[22] = 2; // Channels.
    const struct {
        std::string content;
        int warnings;
    } cases[] = {
        {whole, 0},
        {whole.substr(0, whole.size() - 1), 1},
        {whole.substr(0, whole.size() - 7), 1},
        {test::waveFile({}), 0},
        {half_a_frame, 1},
    };
    settleDevice();
    for (const auto &c : cases) {
        writeFile("track.wav", c.content);
        said();
        EXPECT_EQ(resources.loadMusic("track.wav", std::to_string(c.content.size())), 0);
        EXPECT_EQ(said(), c.warnings == 0 ? ""
                                          : "Music::loadMusic(): Warning! 'track.wav' is cut short "
                                            "and may not play as it should.\n")
            << c.content.size();
    }
    // A sound loses what is left of the frame, and is no sound if that was all.
    EXPECT_EQ(resources.loadSound("track.wav", "s"), 0);
    EXPECT_EQ(said(), "");
    half_a_frame = test::waveFile({1});
    half_a_frame[22] = 2;
    writeFile("track.wav", half_a_frame);
    EXPECT_EQ(resources.loadSound("track.wav", "s"), -1);
}

TEST_F(Resources, what_the_media_library_says_about_a_file_is_in_the_log) {
    test::CapturedErrors errors;
    resources.loadSound("missing.wav", "s");
    resources.loadMusic("missing.ogg", "m");
    const std::string text = logText();
    for (const std::string file : {"missing.wav", "missing.ogg"}) {
        const auto library = text.find("SFML: Failed to open sound file \"" + file + "\"");
        EXPECT_NE(library, std::string::npos) << text;
        EXPECT_LT(library, text.find("from file '" + file + "'")) << "the reason comes first";
    }
    sf::err() << "said at another time" << std::endl;
    EXPECT_EQ(logText(), text);
    const std::string on_screen = errors.take();
    EXPECT_EQ(on_screen.find("missing"), std::string::npos);
    EXPECT_NE(on_screen.find("said at another time"), std::string::npos);
}

TEST_F(Resources, each_store_has_its_limit) {
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(resources.loadSprite("spr.txt", "it"), 0);
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(resources.loadSound("beep.wav", "it"), 0);
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(resources.loadMusic("beep.wav", "it"), 0);
    said();
    EXPECT_EQ(resources.loadSprite("spr.txt", "more"), -1);
    EXPECT_EQ(resources.loadSound("beep.wav", "more"), -1);
    EXPECT_EQ(resources.loadMusic("beep.wav", "more"), -1);
    EXPECT_EQ(said(), "RM::loadRobustSprite(): Error! Cannot add more Sprites (max is 1000).\n"
                      "RM::loadRobustSprite(): Sprite 'more' not loaded.\n"
                      "RM::loadSound(): Error! Unable to add more sounds (max is 100).\n"
                      "RM::loadMusic(): Error! Unable to add more musics (max is 50).\n");
}

TEST_F(Resources, as_many_tracks_are_stopped_as_there_are_sounds) {
    for (const int sounds : {0, 1, 49, 51, 100}) {
        resources.loadMusic("beep.wav", "m");
        for (int i = 0; i < sounds; ++i)
            resources.loadSound("beep.wav", "s");
        said();
        sv::LogManager::getInstance().setLogLevel(5);
        resources.shutDown();
        std::string expected;
        for (int i = 0; i < std::min(sounds, 50); ++i)
            expected += "Music::stop(): Stopping music.\n";
        EXPECT_EQ(said(), expected + "RM::shutDown(): successfully stopped.\n");
        sv::LogManager::getInstance().setLogLevel(0);
        resources.startUp();
    }
}

TEST_F(Resources, is_empty_after_a_stop_and_a_start_and_loads_nothing_in_between) {
    for (int round = 0; round < 2; ++round) {
        resources.loadSprite("spr.txt", "it");
        resources.loadSound("beep.wav", "it");
        resources.loadMusic("beep.wav", "it");
        resources.getSound("it")->play(true);
        resources.getMusic("it")->play(true);
        EXPECT_EQ(resources.startUp(), -1) << "started already";
        resources.shutDown();

        EXPECT_EQ(resources.getSprite("it"), nullptr) << "sprites go with the stop";
        EXPECT_NE(resources.getSound("it"), nullptr) << "sounds stay";
        EXPECT_NE(resources.getMusic("it"), nullptr) << "tracks stay";
        EXPECT_EQ(resources.loadSprite("spr.txt", "it"), -1);
        EXPECT_EQ(resources.loadSound("beep.wav", "it"), -1);
        EXPECT_EQ(resources.loadMusic("beep.wav", "it"), -1);

        EXPECT_EQ(resources.startUp(), 0);
        EXPECT_EQ(resources.getSound("it"), nullptr);
        EXPECT_EQ(resources.getMusic("it"), nullptr);
    }
    EXPECT_EQ(logCount("ResourceManager not started!"), 6);
    EXPECT_EQ(logCount("ResourceManager::startup(): Warning! ResourceManager already started."), 2);
}

TEST_F(Resources, each_step_is_told_at_its_level) {
    resources.shutDown();
    sv::LogManager::getInstance().setLogLevel(5);
    settleDevice();
    resources.startUp();
    resources.loadSound("beep.wav", "s");
    resources.loadMusic("beep.wav", "m");
    resources.getSound("s")->play();
    resources.getMusic("m")->play(true);
    resources.shutDown();
    EXPECT_EQ(said(), "RM::startUp(): successfully started.\n"
                      "RM::loadSound(): Sound 's' successfully loaded.\n"
                      "RM::loadMusic(): Music 'm' successfully loaded.\n"
                      "RM::getSound(): Looking for sound 's'.\n"
                      "Sound::play(): Playing sound.\n"
                      "RM::getMusic(): Looking for music 'm'.\n"
                      "Music::play(): Playing music.\n"
                      "Music::stop(): Stopping music.\n"
                      "RM::shutDown(): successfully stopped.\n");
}
