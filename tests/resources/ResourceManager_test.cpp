#include "selvane/core/LogManager.h"
#include "selvane/platform/system.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/resources/audioDevice.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waveFile.h"

#include <SFML/System/Err.hpp>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace {

struct Resources : test::EngineTest {
    Resources() {
        // OpenAL plays into nothing, whatever this machine can do.
        test::setEnvironment("ALSOFT_DRIVERS", "null");
        startLog();
        resources.startUp();
        writeFile("spr.txt", "1\n1\n1\n0\nred\na\n");
        writeFile("beep.wav", test::waveFile({1000, -1000, 1000, -1000}));
    }

    /// A missing device is logged once: before the comparisons.
    void settleDevice() {
        sv::hasAudioDevice();
        said();
    }

    void expectFound(bool is_found, const std::string &label) {
        EXPECT_EQ(resources.getSprite(label) != nullptr, is_found) << label;
        EXPECT_EQ(resources.getSound(label) != nullptr, is_found) << label;
        EXPECT_EQ(resources.getMusic(label) != nullptr, is_found) << label;
    }

    /// Loads a sprite, a sound and a track under that label and expects that answer of each.
    void loadAll(const std::string &label, int answer = 0, const std::string &from = "") {
        EXPECT_EQ(resources.loadSprite(from + "spr.txt", label), answer);
        EXPECT_EQ(resources.loadSound(from + "beep.wav", label), answer);
        EXPECT_EQ(resources.loadMusic(from + "beep.wav", label), answer);
    }

    sv::ResourceManager &resources = sv::ResourceManager::getInstance();
};

} // namespace

TEST_F(Resources, first_of_equal_labels_is_found) {
    loadAll("it");
    EXPECT_EQ(resources.loadSound("beep.wav", ""), 0);
    settleDevice();
    writeFile("spr.txt", "1\n1\n1\n0\nblue\nb\n");
    loadAll("it");
    const std::string taken = "(): Warning! Label 'it' is taken; the first one stays.\n";
    EXPECT_EQ(said(), "RM::loadSprite(): Loading sprite 'spr.txt'.\nRM::loadSprite" + taken +
                          "RM::loadSound" + taken + "RM::loadMusic" + taken);
    EXPECT_EQ(resources.getSprite("it")->getColor(), sv::RED);
    EXPECT_NE(resources.getSound(""), nullptr);
    expectFound(true, "it");
    for (const std::string label : {"It", "it ", "[Undefined]"}) {
        said();
        expectFound(false, label);
        EXPECT_EQ(said(), "RM::getSprite(): Warning! Sprite '" + label + "' not found.\n" +
                              "RM::getSound(): Warning! Sound '" + label + "' not found.\n" +
                              "RM::getMusic(): Warning! Music '" + label + "' not found.\n");
    }
}

TEST_F(Resources, files_come_from_the_nearest_folder) {
    const auto program = sv::platform::runningProgram();
    const std::string data =
        std::filesystem::path(program.folder).parent_path().string() + "/share/selvane/";
    const std::string here = std::filesystem::current_path().string();
    const std::string sub = std::filesystem::path(here).filename().string() + "/";
    prepareLog(1);
    loadAll("missing", -1, sub);
    const std::string places = "' was looked for in '" + here + "', '" + program.folder + "', '" +
                               data + program.name + "'.";
    EXPECT_EQ(logCount("findAsset(): Note! '" + sub + "spr.txt" + places), 1);
    EXPECT_EQ(logCount("findAsset(): Note! '" + sub + "beep.wav" + places), 2);
    const std::string folders[] = {data + program.name, program.folder, here};
    for (const std::string &nearer : folders) {
        const std::string path = nearer + "/" + sub;
        std::filesystem::create_directories(path);
        for (const std::string file : {"spr.txt", "beep.wav"})
            std::filesystem::copy_file(file, path + file);
        loadAll(nearer, 0, sub);
        const auto taken = [&](const std::string &file) {
            return logCount("findAsset(): Found '" + sub + file + "' as '" + path + file + "'.");
        };
        EXPECT_EQ(taken("spr.txt"), nearer == here ? 0 : 1);
        EXPECT_EQ(taken("beep.wav"), nearer == here ? 0 : 2);
    }
    EXPECT_EQ(resources.loadSprite(here + "/missing.txt", "s"), -1);
    EXPECT_EQ(logText().find("missing.txt' was looked for"), std::string::npos);
    std::filesystem::remove_all(folders[0]);
    std::filesystem::remove_all(folders[1] + "/" + sub);
}

TEST_F(Resources, unreadable_files_are_refused) {
    std::filesystem::create_directory("folder");
    const std::string whole = test::waveFile({1, 2, 3, 4});
    const auto damaged = [&](std::size_t at, const char *bytes) {
        return std::string(whole).replace(at, std::strlen(bytes), bytes);
    };
    const auto of_claimed_size = [&](const char *bytes) {
        return std::string(whole).replace(40, 4, std::string(bytes, 4));
    };
    const struct {
        const char *file;
        std::string content;
        bool is_track = false; // A track that is cut short is loaded.
    } cases[] = {
        {"missing/x", ""},
        {"folder", ""},
        {"empty.wav", ""},
        {"noise.wav", "this is no sound"},
        {"cut.wav", whole.substr(0, 48), true},
        {"largest.wav", of_claimed_size("\0\0\0\2"), true},
        {"larger.wav", of_claimed_size("\2\0\0\2"), true},
        // A track takes memory for a second of what it claims to be.
        {"fast.wav", test::waveFile({1, 2, 3, 4}, 2'000'000'000)},
        {"still.wav", test::waveFile({1, 2, 3, 4}, 0)},
        {"format.wav", damaged(15, "!")},                  // Not "fmt ": its samples have no size.
        {"circular.wav", damaged(16, "\xF8\xFF\xFF\xFF")}, // With 32 bits it leads to itself.
    };
    for (const auto &[name, content, is_track] : cases) {
        const std::string file = name;
        if (!content.empty() || file == "empty.wav")
            writeFile(file, content);
        EXPECT_EQ(resources.loadSound(file, "s"), -1);
        EXPECT_EQ(logLines().back(),
                  "RM::loadSound(): Error! Cannot load sound from file '" + file + "'.");
        EXPECT_EQ(resources.loadMusic(file, "cut"), is_track ? 0 : -1);
        EXPECT_EQ(logCount("RM::loadmusic(): Error! Cannot load music from file '" + file + "'."),
                  is_track ? 0 : 1);
    }
    expectLogged({"Sound::loadSound(): Error! 'larger.wav' has more than 16777216 samples. Play it "
                  "as music."});
    EXPECT_EQ(logText().find("largest.wav' has more"), std::string::npos);
    EXPECT_EQ(resources.loadMusic("beep.wav", ""), -1);
    EXPECT_EQ(logLines().back(), "RM::loadMusic(): Error! Must provide label for music.");
    const std::string on_screen = test::errorsOf([&] {
        resources.loadMusic("missing/x", "s");
        EXPECT_NE(logText().find("SFML: Failed to open sound file"), std::string::npos);
        sf::err() << "written at another time" << std::endl;
    });
    EXPECT_EQ(on_screen.find("sound file"), std::string::npos);
    EXPECT_NE(on_screen.find("written at another time"), std::string::npos);
    for (const std::string file : {"missing/x", "folder"}) {
        EXPECT_EQ(resources.loadSprite(file, "p"), -1);
        EXPECT_EQ(logLines().back(), "RM::loadSprite(): Sprite 'p' not loaded.");
        expectLogged({"RM::loadSprite(): Error! Cannot open file '" + file + "'."});
    }
    expectFound(false, "s");
    loadAll("s");
    expectFound(true, "s");
}

TEST_F(Resources, cut_tracks_load_with_a_warning) {
    const std::string whole = test::waveFile({1, 2, 3, 4});
    std::string half_a_frame = test::waveFile({1, 2, 3});
    half_a_frame[22] = 2; // Channels.
    const std::pair<std::string, bool> cases[] = {
        {whole, false},
        {whole.substr(0, whole.size() - 1), true},
        {whole.substr(0, whole.size() - 7), true},
        {test::waveFile({}), false},
        {half_a_frame, true},
    };
    settleDevice();
    for (const auto &[content, is_cut] : cases) {
        writeFile("track.wav", content);
        EXPECT_EQ(resources.loadMusic("track.wav", std::to_string(content.size())), 0);
        EXPECT_EQ(said(), is_cut ? "Music::loadMusic(): Warning! 'track.wav' is cut short and may "
                                   "not play as it should.\n"
                                 : "")
            << content.size();
    }
    // A sound is loaded without the rest of the frame, unless that is all of it.
    EXPECT_EQ(resources.loadSound("track.wav", "s"), 0);
    EXPECT_EQ(said(), "");
    half_a_frame = test::waveFile({1});
    half_a_frame[22] = 2;
    writeFile("track.wav", half_a_frame);
    EXPECT_EQ(resources.loadSound("track.wav", "s"), -1);
}

TEST_F(Resources, stores_have_limits) {
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(resources.loadSprite("spr.txt", "it"), 0);
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(resources.loadSound("beep.wav", "it"), 0);
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(resources.loadMusic("beep.wav", "it"), 0);
    said();
    loadAll("more", -1);
    EXPECT_EQ(said(), "RM::loadRobustSprite(): Error! Cannot add more Sprites (max is 1000).\n"
                      "RM::loadRobustSprite(): Sprite 'more' not loaded.\n"
                      "RM::loadSound(): Error! Unable to add more sounds (max is 100).\n"
                      "RM::loadMusic(): Error! Unable to add more musics (max is 50).\n");
}

TEST_F(Resources, sounds_count_the_tracks_that_are_stopped) {
    sv::LogManager &log = sv::LogManager::getInstance();
    for (const int sounds : {0, 1, 49, 51, 100}) {
        resources.loadMusic("beep.wav", "m");
        for (int i = 0; i < sounds; ++i)
            resources.loadSound("beep.wav", "s");
        said();
        log.setLogLevel(5);
        resources.shutDown();
        log.setLogLevel(0);
        const std::string lines = said();
        EXPECT_EQ(std::ranges::count(lines, '\n'), std::min(sounds, 50) + 1) << lines;
        EXPECT_EQ(lines.find("Music::stop(): Stopping music.\n") == 0, sounds > 0);
        resources.startUp();
    }
}

TEST_F(Resources, restarts_begin_with_empty_stores) {
    for (int round = 0; round < 2; ++round) {
        loadAll("it");
        resources.getSound("it")->play(true);
        resources.getMusic("it")->play(true);
        EXPECT_EQ(resources.startUp(), -1) << "started already";
        resources.shutDown();

        EXPECT_EQ(resources.getSprite("it"), nullptr) << "sprites go with the stop";
        EXPECT_NE(resources.getSound("it"), nullptr) << "sounds stay";
        EXPECT_NE(resources.getMusic("it"), nullptr) << "tracks stay";
        loadAll("it", -1);

        EXPECT_EQ(resources.startUp(), 0);
        expectFound(false, "it");
    }
    EXPECT_EQ(logCount("ResourceManager not started!"), 6);
    EXPECT_EQ(logCount("ResourceManager::startup(): Warning! ResourceManager already started."), 2);
}

TEST_F(Resources, silent_machines_log_it_once) {
    test::setEnvironment("ALSOFT_DRIVERS", "there-is-none");
    const std::string on_screen = test::errorsOf([] {
        for (int i = 0; i < 50; ++i) {
            sv::Sound sound;
            ASSERT_EQ(sound.loadSound("beep.wav"), 0);
            sound.play(true);
            sound.stop();
            sv::Music track;
            ASSERT_EQ(track.loadMusic("beep.wav"), 0);
            track.play(true);
            track.stop();
        }
    });
    EXPECT_LT(std::count(on_screen.begin(), on_screen.end(), '\n'), 20);
    EXPECT_EQ(logText(), "hasAudioDevice(): Note! No audio device can be opened. Sounds and music "
                         "stay silent.\n");
}

/// Replays open no device, and would go on with other numbers than the game had.
TEST_F(Resources, audio_devices_take_no_random_numbers_from_games) {
    test::setEnvironment("ALSOFT_DRIVERS", "pulse");
    test::setEnvironment("HOME", std::filesystem::current_path().string()); // Nothing is in it.
    test::clearEnvironment("XDG_RUNTIME_DIR");
    test::clearEnvironment("PULSE_RUNTIME_PATH");
    std::srand(5);
    const int number = std::rand();
    std::srand(5);
    test::errorsOf([] { sv::hasAudioDevice(); });
    EXPECT_EQ(std::rand(), number);
}

// docs/sprites.md shows both files.
TEST_F(Resources, the_documented_fault_reads_as_documented) {
    const auto sample = [](const std::string &name) {
        std::ifstream file(SAMPLES "/" + name);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    writeFile("beetle.txt", sample("short-row.txt"));
    EXPECT_EQ(resources.loadSprite("beetle.txt", "beetle"), -1);
    EXPECT_EQ(said(), sample("short-row-log.txt"));
}

TEST_F(Resources, sprites_of_the_game_fit_the_game) {
    std::set<std::string> pictures;
    for (const std::string shape : {"square", "circle", "triangle"}) {
        for (const std::string color : {"red", "yellow", "blue"}) {
            const std::string label = shape + "-" + color;
            EXPECT_EQ(resources.loadSprite(SPRITES "/" + label + "-spr.txt", label), 0) << label;
            const sv::Sprite &target = *resources.getSprite(label);
            EXPECT_EQ(target.getColor(), sv::colorFromName(color)) << label;
            EXPECT_EQ(target.getWidth(), 3);
            EXPECT_EQ(target.getHeight(), 3);
            pictures.insert(target.getFrame(0).getString());
        }
    }
    EXPECT_EQ(pictures.size(), 9U) << "two differ only by their colours";
}
