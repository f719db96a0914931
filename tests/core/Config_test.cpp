#include "selvane/core/Config.h"

#include "selvane/core/text.h"
#include "selvane/platform/system.h"
#include "support/EngineTest.h"
#include "support/environment.h"

#include <filesystem>
#include <fstream>

namespace sv {
namespace {

struct ConfigTest : test::EngineTest {
    ConfigTest() { prepareLog(1); }

    /// What is logged while a text is loaded; empty: the file.
    std::string load(const std::string &text = "") {
        return test::errorsOf([&] { config.loadConfig(text); });
    }

    std::string loadFile(const std::string &content) {
        writeFile("sv-config.txt", content);
        return load();
    }

    std::string loadFrom(const std::string &file) {
        test::setEnvironment(CONFIG_FILE_VARIABLE, file);
        return load();
    }

    std::string printed() {
        return test::errorsOf([&] { config.printConfig(); });
    }

    Config &config = Config::getInstance();
};

TEST_F(ConfigTest, settings_are_printed) {
    const struct {
        const char *label, *by_default, *key, *set;
        const char *shown = set;
    } settings[] = {
        {"Window horizontal pixels", "1024", "window_horizontal_pixels", "1"},
        {"Window vertical pixels", "768", "window_vertical_pixels", "2"},
        {"Window horizontal characters", "80", "window_horizontal_chars", "3"},
        {"Window vertical characters", "24", "window_vertical_chars", "4"},
        {"Window background color", "0", "window_background_color", "cyan", "6"},
        {"Frame time", "33", "frame_time", "7"},
        {"Window style", "default", "window_style", "fullscreen"},
        {"Window title", "Selvane", "window_title", "nine"},
        {"Show mouse", "false", "show_mouse", "true"},
        {"Headless", "false", "headless", "true"},
        {"Font file", "sv-font.ttf", "font_file", "ten.ttf"},
        {"Log file", "selvane.log", "logfile", "eleven.log"},
        {"Random seed", "0", "random_seed", "-12"},
        {"Networking", "false", "networking", "true"},
        {"Scene graph", "simple", "scene_graph", "grid", "simple"},
    };
    const std::string ruler = "-----------------------------------\n";
    std::string by_default = ruler + "Selvane configuration:\n";
    std::string changed = by_default;
    std::string text;
    for (const auto &s : settings) {
        by_default += std::string("  ") + s.label + ": " + s.by_default + "\n";
        changed += std::string("  ") + s.label + ": " + s.shown + "\n";
        text += std::string(s.key) + ":" + s.set + ",";
    }
    EXPECT_EQ(printed(), by_default + ruler);
    load(text);
    EXPECT_EQ(printed(), changed + ruler);
}

TEST_F(ConfigTest, values_follow_their_rules) {
    const struct {
        const char *text, *line;
        const char *logged = "";
    } cases[] = {
        {"window_title:Space Game,", "  Window title: SpaceGame"},
        {"frame_time:fast,", "  Frame time: 0"},
        {"frame_time:,", "  Frame time: 33"},
        {"frame_time:20headless:true,", "  Headless: false"},
        {"show_mouse:TRUE,", "  Show mouse: false"},
        {"window_style:Fullscreen,", "  Window style: default",
         "loadConfig(): Unsupported window style 'Fullscreen'\n"},
        {"window_background_color:blue,", "  Window background color: 4"},
        {"window_background_color:yellow,", "  Window background color: 7",
         "loadConfig(): Unsupported window color 'yellow'\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        load("frame_time:33,window_style:default,window_title:Selvane,show_mouse:false,"
             "headless:false,window_background_color:white,");
        EXPECT_EQ(load(c.text), c.logged);
        EXPECT_NE(printed().find(std::string(c.line) + "\n"), std::string::npos) << printed();
    }
}

TEST_F(ConfigTest, lines_are_joined) {
    const std::pair<const char *, const char *> cases[] = {
        {"a:1,\r\n\r\nb:2,\n", "a:1,b:2,"},
        {"frame_time:20\nheadless:true\n", "frame_time:20headless:true"},
        {"# a\n#b\na:1,#c\n", "a:1,#c"},
        {" #a:1,\nb:2,\n", " #a:1,b:2,"},
        {"a:\rb\n", "a:\rb"},
        {"\xEF\xBB\xBF# a\nb:2,\n", "b:2,"},
    };
    for (const auto &[content, joined] : cases) {
        writeFile("sv-config.txt", content);
        EXPECT_EQ(config.readConfig(), joined) << testing::PrintToString(content);
    }
}

TEST_F(ConfigTest, variable_names_the_file) {
    writeFile("sv-config.txt", "frame_time:20,");
    writeFile("other.txt", "\tframe_time : 21 ,\r\n");
    EXPECT_EQ(loadFrom("other.txt"), "");
    EXPECT_EQ(config.getFrameTime(), 21);
    match("frame_time:20,window_title:Other,", "frame_time");
    const std::string logged = loadFrom("missing/other.txt");
    EXPECT_EQ(logged.find("Config::readConfig(): Cannot open Selvane configuration file "
                          "'sv-config.txt'.\nfindAsset(): Note! 'missing/other.txt' was looked "
                          "for in '"),
              0U)
        << logged;
    EXPECT_EQ(config.getFrameTime(), 21) << "taken from another text";
}

TEST_F(ConfigTest, a_file_beside_the_program_is_read) {
    const std::string name = std::filesystem::current_path().filename().string();
    const std::string path = platform::runningProgram().folder + "/" + name;
    writeFile(path, "frame_time:22,");
    EXPECT_EQ(loadFrom(name), "findAsset(): Found '" + name + "' as '" + path + "'.\n");
    EXPECT_EQ(config.getFrameTime(), 22);
    std::filesystem::remove(path);
}

TEST_F(ConfigTest, files_that_are_not_text_are_ignored) {
    std::filesystem::create_directory("folder");
    writeFile("program", std::string("ELF\0\nheadless:true,frame_time:5,", 32));
    writeFile("endless", "headless:true,frame_time:5," + std::string(MAX_CONFIG_BYTES, 'x'));
    for (const std::string name : {"program", "endless", "folder", "/dev/zero"}) {
        if (!std::ifstream(name).is_open())
            continue; // Some systems open no folder, or have no such device.
        EXPECT_EQ(loadFrom(name), "Config::readConfig(): Warning! '" + name +
                                      "' is no text of at most 65536 bytes. Ignored.\n");
        EXPECT_EQ(config.getFrameTime(), 33) << name;
    }
    writeFile("longest", "frame_time:5,#" + std::string(MAX_CONFIG_BYTES - 14, 'x'));
    loadFrom("longest");
    EXPECT_EQ(config.getFrameTime(), 5);
}

TEST_F(ConfigTest, likely_mistakes_are_logged_with_their_line) {
    const std::string comment = "A comment is a line that begins with '#'; here it is part of a "
                                "setting.";
    const struct {
        const char *content;
        int line;
        std::string fault;
    } cases[] = {
        {"fframe__Time:20,", 1,
         "No setting is called 'fframe__Time', but one is called 'frame_time'."},
        {"# a\n\nlives:3,", 3, "No setting is called 'lives'."},
        {"frame_time = 20,", 1, "'frame_time=20' has no colon; 'frame_time:20,' is meant."},
        {"headless,", 1, "'headless' has no colon; a setting is written as key:value,"},
        {"frame_time:20\n# b\nheadless:true,", 1,
         "A setting ends with a comma; this one goes on in line 3."},
        {"frame_time:20 headless:true,", 1,
         "'frame_time:20headless:true' has a second colon, which ends the value; between two "
         "settings stands a comma."},
        {"frame_time:20, # slow\nheadless:true,", 1, comment},
        {"window_title:Mine # for now,", 1, comment},
        {"frame_time:33,\nshow_mouse:True,", 2, "'True' counts as false; write true or false."},
        {"frame_time:-5,", 1, "-5 waits as little as 0 does; milliseconds from 0 on are meant."},
        {"frame_time:20ms,", 1, "'20ms' is no whole number and counts as 20."},
        {"font_scale:2.5x,", 1, "'2.5x' is no number and counts as 2.5."},
        {"::,", 1, "'::' has no key, and nothing after it is read."},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(loadFile(c.content), "Config::readConfig(): Warning! sv-config.txt, line " +
                                           std::to_string(c.line) + ": " + c.fault + "\n");
        EXPECT_EQ(load(c.content), "") << "a text of the program's own";
    }
    std::string much;
    for (int i = 0; i < 1000; ++i)
        much += std::string(1000, 'x') + ":,";
    EXPECT_LT(loadFile(much.substr(0, MAX_CONFIG_BYTES)).size(), 4000U);
}

TEST_F(ConfigTest, valid_files_log_nothing) {
    for (const char *content :
         {"frame_time:+20,font_scale:1e0,\r\n#\r\n\r\n random_seed :\t-1 , headless:false",
          "window_title:C# Game #1,logfile:a#b.log,\nfont_scale:.5,\nnetworking:\n,show_mouse:,",
          "window_style:default,,\n,window_background_color:white,",
          "quadtree_depth:1,grid_width:1,quadtree_threshold:1,grid_height:1,"})
        EXPECT_EQ(loadFile(content), "") << content;
    EXPECT_EQ(loadFrom(SHIPPED_CONFIG), "");
    EXPECT_EQ(config.getWindowTitle(), "Afterimage");
    EXPECT_FALSE(config.getBackgroundInput());
}

} // namespace
} // namespace sv
