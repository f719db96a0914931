#include "core/Config.h"

#include "core/LogManager.h"
#include "core/text.h"
#include "support/EngineTest.h"
#include "support/environment.h"

#include <algorithm>

namespace sv {

namespace {

class ConfigTest : public test::EngineTest {
  protected:
    ConfigTest() { prepareLog(); }

    /// What is said on standard error while a text is loaded; empty: the file.
    std::string load(const std::string &text) {
        test::CapturedErrors errors;
        config.loadConfig(text);
        return errors.take();
    }

    std::vector<std::string> printed() {
        if (!LogManager::getInstance().isStarted())
            startLog(1);
        const std::size_t before = logLines().size();
        config.printConfig();
        auto lines = logLines();
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before));
        return lines;
    }

    Config &config = Config::getInstance();
};

TEST_F(ConfigTest, prints_the_built_in_settings_without_a_file) {
    EXPECT_EQ(load(""), "");
    const std::vector<std::string> expected{"-----------------------------------",
                                            "Selvane configuration:",
                                            "  Window horizontal pixels: 1024",
                                            "  Window vertical pixels: 768",
                                            "  Window horizontal characters: 80",
                                            "  Window vertical characters: 24",
                                            "  Window background color: 0",
                                            "  Frame time: 33",
                                            "  Window style: default",
                                            "  Window title: Selvane",
                                            "  Show mouse: false",
                                            "  Headless: false",
                                            "  Font file: sv-font.ttf",
                                            "  Log file: selvane.log",
                                            "  Random seed: 0",
                                            "  Networking: false",
                                            "  Scene graph: simple",
                                            "-----------------------------------"};
    EXPECT_EQ(printed(), expected);
    LogManager::getInstance().setLogLevel(0);
    EXPECT_EQ(printed(), std::vector<std::string>());
    EXPECT_EQ(config.getFontScale(), 2.0F);
    EXPECT_EQ(config.getQuadtreeThreshold(), 1);
    EXPECT_EQ(config.getQuadtreeDepth(), 10);
    EXPECT_EQ(config.getGridWidth(), 20);
    EXPECT_EQ(config.getGridHeight(), 8);
}

TEST_F(ConfigTest, each_key_sets_its_own_setting) {
    load("window_horizontal_pixels:1,window_vertical_pixels:2,window_horizontal_chars:3,"
         "window_vertical_chars:4,window_style:fullscreen,window_background_color:cyan,"
         "frame_time:7,font_scale:8.5,window_title:nine,show_mouse:true,headless:true,"
         "font_file:ten.ttf,logfile:eleven.log,random_seed:-12,networking:true,"
         "quadtree_threshold:13,quadtree_depth:14,grid_width:15,grid_height:16,");
    EXPECT_EQ(config.getWindowHorizontalPixels(), 1);
    EXPECT_EQ(config.getWindowVerticalPixels(), 2);
    EXPECT_EQ(config.getWindowHorizontalChars(), 3);
    EXPECT_EQ(config.getWindowVerticalChars(), 4);
    EXPECT_EQ(config.getWindowStyle(), 8);
    EXPECT_EQ(config.getWindowBackgroundColor(), CYAN);
    EXPECT_EQ(config.getFrameTime(), 7);
    EXPECT_EQ(config.getFontScale(), 8.5F);
    EXPECT_EQ(config.getWindowTitle(), "nine");
    EXPECT_TRUE(config.getShowMouse());
    EXPECT_TRUE(config.getHeadless());
    EXPECT_EQ(config.getFontFile(), "ten.ttf");
    EXPECT_EQ(config.getLogFile(), "eleven.log");
    EXPECT_EQ(config.getRandomSeed(), -12);
    EXPECT_TRUE(config.getNetworking());
    EXPECT_EQ(config.getQuadtreeThreshold(), 13);
    EXPECT_EQ(config.getQuadtreeDepth(), 14);
    EXPECT_EQ(config.getGridWidth(), 15);
    EXPECT_EQ(config.getGridHeight(), 16);
}

TEST_F(ConfigTest, values_are_taken_by_their_rules) {
    struct Case {
        const char *text, *line, *said;
    };
    const Case cases[] = {
        {"window_title:Space Game,", "  Window title: SpaceGame", ""},
        {"window_title:a:b,", "  Window title: a", ""},
        {"window_title:a,window_title:b", "  Window title: a", ""},
        {"Window_title:b,", "  Window title: Selvane", ""},
        {"frame_time:fast,", "  Frame time: 0", ""},
        {"frame_time:,", "  Frame time: 33", ""},
        {"frame_time:-5ms,", "  Frame time: -5", ""},
        {"frame_time:20headless:true,", "  Headless: false", ""},
        {"show_mouse:TRUE,", "  Show mouse: false", ""},
        {"window_style:fullscreen,", "  Window style: fullscreen", ""},
        {"window_style:Fullscreen,", "  Window style: default",
         "loadConfig(): Unsupported window style 'Fullscreen'\n"},
        {"window_background_color:black,", "  Window background color: 0", ""},
        {"window_background_color:red,", "  Window background color: 1", ""},
        {"window_background_color:green,", "  Window background color: 2", ""},
        {"window_background_color:yellow,", "  Window background color: 7",
         "loadConfig(): Unsupported window color 'yellow'\n"},
        {"window_background_color:blue,", "  Window background color: 4", ""},
        {"window_background_color:magenta,", "  Window background color: 5", ""},
        {"window_background_color:cyan,", "  Window background color: 6", ""},
        {"window_background_color:Red,", "  Window background color: 7",
         "loadConfig(): Unsupported window color 'Red'\n"},
    };
    // What each case starts from; white, so that black shows.
    const std::string before = "frame_time:33,window_style:default,window_title:Selvane,"
                               "show_mouse:false,headless:false,window_background_color:white,";
    for (const Case &c : cases) {
        SCOPED_TRACE(c.text);
        load(before);
        EXPECT_EQ(load(c.text), c.said);
        const auto lines = printed();
        EXPECT_EQ(std::ranges::count(lines, c.line), 1) << testing::PrintToString(lines);
        LogManager::getInstance().shutDown(); // As before a start: complaints on standard error.
    }
}

TEST_F(ConfigTest, a_file_is_joined_line_to_line) {
    struct Case {
        const char *content, *joined;
    };
    const Case cases[] = {
        {"a:1,\nb:2,\n", "a:1,b:2,"},
        {"a:1,\r\n\r\nb:2,\r\n", "a:1,b:2,"},
        {"frame_time:20\nheadless:true\n", "frame_time:20headless:true"},
        {"# a\n#b\na:1,#c\n", "a:1,#c"},
        {" #a:1,\nb:2,\n", " #a:1,b:2,"},
        {"a:\rb\n", "a:\rb"},
        {"", ""},
    };
    for (const Case &c : cases) {
        writeFile("sv-config.txt", c.content);
        EXPECT_EQ(config.readConfig(), c.joined) << testing::PrintToString(c.content);
    }
}

TEST_F(ConfigTest, the_variable_names_the_file) {
    writeFile("sv-config.txt", "frame_time:20,");
    writeFile("other.txt", " # frame_time:22,\r\n\tframe_time : 21 ,\r\n");
    test::setEnvironment(CONFIG_FILE_VARIABLE, "other.txt");
    load("");
    EXPECT_EQ(config.getFrameTime(), 21) << "an indented comment is an entry of no setting";
}

TEST_F(ConfigTest, a_file_that_cannot_be_opened_is_reported_by_the_default_name) {
    test::setEnvironment(CONFIG_FILE_VARIABLE, "missing/other.txt");
    match("frame_time:20,window_title:Other,", "frame_time");
    EXPECT_EQ(load(""), "");
    EXPECT_EQ(config.getFrameTime(), 33) << "taken from another text";
    LogManager::getInstance().setLogLevel(1);
    EXPECT_EQ(load(""), "Config::readConfig(): Cannot open Selvane configuration file "
                        "'sv-config.txt'.\n");
}

} // namespace

} // namespace sv
