#include "selvane/display/DisplayManager.h"

#include "selvane/core/Config.h"
#include "selvane/display/sfmlColor.h"
#include "selvane/testing/Session.h"
#include "selvane/world/Shape.h"
#include "support/WindowTest.h"
#include "support/environment.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <algorithm>
#include <filesystem>

namespace {

using sv::DisplayManager;
using sv::Vector;
using test::Extent;

constexpr char unable_to_open[] = "DisplayManager::startUp(): Unable to allocate window!\n"
                                  "DisplayManager::startUp(): Note! ";

struct DisplayManagerTest : test::WindowTest {
    static DisplayManager &display() { return DisplayManager::getInstance(); }

    /// Fills the window, then draws a blank at that position; what stays unfilled.
    static Extent erasedBy(Vector world_pos) {
        sf::RenderWindow &window = *display().getWindow();
        window.clear(sf::Color::White);
        EXPECT_EQ(display().drawCh(world_pos, ' ', sv::WHITE), 0);
        return test::extentOf(sf::Color::Black, picture());
    }

    /// Expects the start to fail, and the log to contain the reason.
    void expectRefused(const std::string &reason) {
        EXPECT_EQ(display().startUp(), -1);
        EXPECT_EQ(display().getWindow(), nullptr);
        const std::string lines = said();
        EXPECT_NE(lines.find(reason), std::string::npos) << lines;
    }
};

TEST_F(DisplayManagerTest, strings_stand_as_justified) {
    sv::Session session;
    session.start();
    const struct {
        const char *str;
        sv::Justification just;
        const char *row;
    } cases[] = {
        {"abcde", sv::LEFT_JUSTIFIED, "    abcde"}, {"abcde", sv::CENTER_JUSTIFIED, "  abcde"},
        {"abcd", sv::CENTER_JUSTIFIED, "  abcd"},   {"abcd", sv::RIGHT_JUSTIFIED, "abcd"},
        {"a", sv::CENTER_JUSTIFIED, "    a"},       {"a", sv::RIGHT_JUSTIFIED, "   a"},
    };
    for (const auto &[str, just, row] : cases) {
        EXPECT_EQ(display().drawString({4, 0}, str, just, sv::GREEN), 0);
        session.play();
        EXPECT_EQ(session.screen(), row);
        EXPECT_EQ(session.colors().find_last_not_of(" g"), std::string::npos);
    }
}

TEST_F(DisplayManagerTest, code_points_are_cells_in_utf_8) {
    sv::Session session({.config = "utf8:true,"});
    session.start();
    const struct {
        std::string str;
        sv::Justification just;
        const char *row;
    } cases[] = {
        {"M\u00FCller", sv::CENTER_JUSTIFIED, "    M\u00FCller"},
        {"\u2554\u2550\u2557", sv::RIGHT_JUSTIFIED, "    \u2554\u2550\u2557"},
        {"u\u0308\u4E16.", sv::LEFT_JUSTIFIED, "       u\u0308\u4E16."}, // A cell for each.
        {"a\xC3z\xFF\x01", sv::LEFT_JUSTIFIED, "       a\uFFFDz\uFFFD?"},
    };
    for (const auto &[str, just, row] : cases) {
        EXPECT_EQ(display().drawString({7, 0}, str, just, {255, 128, 0}, sv::Rgb(sv::BLUE)), 0);
        session.play();
        EXPECT_EQ(session.screen(), row);
        EXPECT_EQ(session.colors().find_first_not_of(' '), session.screen().find_first_not_of(' '));
    }
    display().drawCh({1, 0}, '\xFC');
    display().drawCh({2, 0}, U'\u00FC');
    for (int i = 0; i < 50; ++i) {
        display().drawString({4, 0}, "M\xFCller " + std::to_string(i));
        display().drawString({0, 1}, std::string(static_cast<std::size_t>(i), 'x') + "\xFF");
    }
    session.play();
    EXPECT_TRUE(session.screen().starts_with(" \uFFFD\u00FC M\uFFFDller 49\nxxxx"));
    const std::string log = session.log();
    EXPECT_NE(log.find("drawString(): Warning! 'M\uFFFDller 0' is no UTF-8 from byte 2 on.\n"),
              std::string::npos)
        << log;
    EXPECT_EQ(std::count(log.begin(), log.end(), '!'), 20) << log;
}

TEST_F(DisplayManagerTest, unknown_colors_are_white) {
    startLog(5);
    for (const int number : {-1, int{sv::CUSTOM}, 9})
        EXPECT_EQ(sv::colorToSFML(sv::Color(number)), sf::Color::White);
    EXPECT_EQ(logText(), "colorToSFML(): Color -1 not supported.\n"
                         "colorToSFML(): Color is CUSTOM.\n"
                         "colorToSFML(): Color 9 not supported.\n");
}

TEST_F(DisplayManagerTest, titles_are_utf_8) {
    server.emplace();
    for (const std::string title : {"Caf\u00e9", "\u4e16\u754c", "Two\u00a0Words"}) {
        for (const std::string noise : {"", "\xe9", "\xff\xfe\xfd\xfc", "\xed\xb0\x80"}) {
            configure("window_title:" + title + noise);
            ASSERT_EQ(display().startUp(), 0);
            EXPECT_TRUE(server->windowTitle().starts_with(title));
            EXPECT_EQ(server->windowTitle().size() > title.size(), !noise.empty());
            display().shutDown();
        }
    }
}

TEST_F(DisplayManagerTest, unstarted_displays_refuse_and_convert) {
    startLog(30);
    EXPECT_EQ(display().drawCh({0, 0}, 'x', sv::RED), -1);
    EXPECT_EQ(display().drawCh({0, 0}, 'x', 1, 2, 3), -1);
    EXPECT_EQ(display().drawString({0, 0}, "xyz", sv::CENTER_JUSTIFIED, sv::RED), -1);
    EXPECT_EQ(display().swapBuffers(), -1);
    EXPECT_EQ(said(), "DisplayManager not started!\nDisplayManager not started!\n"
                      "DisplayManager not started!\nDisplayManager not started!\n");
    EXPECT_EQ(sv::spacesToPixels({10, 2}), (Vector{128, 64}));
    EXPECT_EQ(sv::pixelsToSpaces({64, 16}), (Vector{5, 0.5F}));
    EXPECT_EQ(said(), "spacesToPixels(int): spaces (10.00,2.00) = pixels (128.00,64.00)\n"
                      "pixelsToSpaces(): pixels (64.00,16.00) = spaces (5.00,0.50)\n");
}

TEST_F(DisplayManagerTest, unusable_displays_are_refused_with_advice) {
    startLog();
    struct {
        const char *display;
        std::vector<std::string> server_arguments;
        const char *settings;
    } const cases[] = {
        {"", {}, ""},
        {":64999", {}, ""},
        {nullptr, {"-extension", "GLX"}, ""},
        {nullptr, {"-screen", "0", "800x600x16"}, ""},
        {nullptr, {"-extension", "RANDR"}, "window_style:fullscreen"},
    };
    for (const auto &[name, arguments, settings] : cases) {
        configure(settings);
        if (name != nullptr)
            test::setEnvironment("DISPLAY", name);
        else
            server.emplace(800, 600, arguments);
        expectRefused(unable_to_open);
    }
    EXPECT_NE(logText().find("headless:true"), std::string::npos);
}

TEST_F(DisplayManagerTest, windows_open_on_servers_that_reset) {
    server.emplace(1600, 1200, std::vector<std::string>(), false);
    configure("");
    ASSERT_EQ(display().startUp(), 0);
    EXPECT_EQ(erasedBy({0, 0}), (Extent{0, 6, 11, 37}));
}

TEST_F(DisplayManagerTest, impossible_sizes_are_refused) {
    startLog();
    server.emplace();
    const char *const cases[] = {
        "window_horizontal_pixels:0",
        "window_vertical_pixels:16385",
        "window_horizontal_chars:-1",
        "headless:true,window_vertical_chars:none",
    };
    const std::string usual = ",window_horizontal_pixels:1024,window_vertical_pixels:768,"
                              "window_horizontal_chars:80,window_vertical_chars:24,headless:false";
    for (const char *settings : cases) {
        SCOPED_TRACE(settings);
        configure(settings + usual); // The first of two settings counts.
        expectRefused(unable_to_open);
        EXPECT_EQ(sv::spacesToPixels({1, 1}), (Vector{12.8F, 32}));
    }
}

TEST_F(DisplayManagerTest, unsuitable_fonts_are_logged) {
    server.emplace();
    startLog();
    writeFile("noise.ttf", std::string(5000, 'x'));
    std::filesystem::create_directory("folder.ttf");
    // One letter, eight pixels high.
    writeFile("letter.bdf",
              "STARTFONT 2.1\nFONT -test-letter-medium-r-normal--8-80-75-75-c-80-iso10646-1\n"
              "SIZE 8 75 75\nFONTBOUNDINGBOX 8 8 0 0\nSTARTPROPERTIES 4\n"
              "CHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nFONT_ASCENT 8\n"
              "FONT_DESCENT 0\nENDPROPERTIES\nCHARS 1\nSTARTCHAR A\nENCODING 65\n"
              "SWIDTH 500 0\nDWIDTH 8 0\nBBX 8 8 0 0\nBITMAP\n18\n24\n42\n42\n7E\n42\n42\n42\n"
              "ENDCHAR\nENDFONT\n");
    const std::string square = ",window_horizontal_pixels:800,window_vertical_pixels:480,"
                               "window_horizontal_chars:50,window_vertical_chars:30";
    const std::string usual = ",window_horizontal_pixels:1024,window_vertical_pixels:768,"
                              "window_horizontal_chars:80,window_vertical_chars:24,font_scale:2";
    const std::string unable = "Unable to load font from file ";
    const std::string cut = "Warning! The font's characters are larger than their cells and cut by "
                            "their neighbours. A font_scale of ";
    const std::pair<std::string, std::string> cases[] = {
        // With a part of what is logged.
        {"font_file:sv-font.ttf", ""}, // In no folder, so the distribution's font serves.
        {"font_file:missing.ttf", "face)\nDisplayManager::startUp(): " + unable +
                                      "'missing.ttf'.\nfindAsset(): Note! 'missing.ttf' was looked "
                                      "for in '"},
        {"font_file:folder.ttf", unable + "'folder.ttf'.\n"},
        {"font_file:noise.ttf", unable + "'noise.ttf'.\n"},
        {"font_file:letter.bdf", "SFML: Available sizes are: 8 \n"},
        {"font_scale:0", "Warning! Font scale 0 makes text 0 pixels high. Using 1.\n"},
        {"font_scale:nan", "Warning! Font scale nan makes text nan pixels high. Using 1.\n"},
        {"font_scale:1e30", "Font scale 1e+30 makes text 1.28e+31 pixels high. Using 1000.\n"},
        {"font_scale:2.5", cut + "2.04 would fit.\n"},
        {"font_scale:2.04", ""},
        {"font_scale:2" + square, cut + "1.13 would fit.\n"},
        {"font_scale:1.13" + square, ""},
        {"utf8:true,fallback_font:missing.ttf", unable + "'missing.ttf'.\n"},
    };
    for (const auto &[settings, end] : cases) {
        SCOPED_TRACE(settings);
        configure(settings + usual);
        const bool can_start = end.find("Unable") == std::string::npos;
        EXPECT_EQ(display().startUp(), can_start ? 0 : -1);
        const std::string lines = said();
        EXPECT_EQ(lines.empty(), end.empty()) << lines;
        EXPECT_NE(lines.find(end), std::string::npos) << lines;
        if (can_start) {
            EXPECT_EQ(display().drawString({1, 1}, "text"), 0);
            EXPECT_EQ(display().swapBuffers(), 0);
        }
        display().shutDown();
    }
}

TEST_F(DisplayManagerTest, a_second_font_fills_the_gaps) {
    startDisplay(
        "utf8:true,window_horizontal_chars:20,window_vertical_chars:10,"
        "fallback_font:/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"); // Cells of 51.2 x 76.8.
    const auto extent = [](char32_t ch) {
        display().swapBuffers();
        EXPECT_EQ(display().drawCh({5, 5}, ch, sv::WHITE), 0);
        return test::extentOf(sf::Color::White, picture());
    };
    startLog();
    display().swapBuffers(); // The first frame is white.
    // A letter, an arrow as wide as two cells, and an accent, which fonts put left of its place.
    for (const char32_t ch : {U'\u0416', U'\u27F5', U'\u0301'}) {
        SCOPED_TRACE(static_cast<unsigned>(ch));
        const Extent shown = extent(ch);
        EXPECT_GT(shown.right, shown.left) << "something is shown";
        EXPECT_GE(shown.left, 256) << "the cell begins here";
        EXPECT_LE(shown.right, 308);
    }
    EXPECT_EQ(logText(), "");
    const Extent sign = extent(U'\u4E16');
    EXPECT_EQ(extent(U'\u4E16'), sign);
    EXPECT_EQ(extent(U'\u754C'), sign);
    EXPECT_GT(sign.bottom, sign.top + 9);
    EXPECT_EQ(logText(), "DisplayManager: Warning! No font has the character U+4E16, '\u4E16'.\n"
                         "DisplayManager: Warning! No font has the character U+754C, '\u754C'.\n");
}

TEST_F(DisplayManagerTest, screenshots_show_the_next_frame) {
    startLog();
    const auto expect_refused = [this](const std::string &file, const std::string &why) {
        said();
        EXPECT_EQ(display().saveScreenshot(file), -1);
        EXPECT_EQ(said(), "DisplayManager::saveScreenshot(): Error! '" + file +
                              "' is not saved: " + why + ".\n");
    };
    expect_refused("early.png", "there is no window");
    startDisplay();
    expect_refused("picture.gif", "its name does not end with .png");
    expect_refused("nowhere/picture.png", "it cannot be written");
    display().swapBuffers(); // The first frame is white.
    display().drawString({4, 4}, "next");
    const sf::Image drawn = picture();
    display().swapBuffers();
    // The second of two frames alike, which would not be drawn, and the last one.
    for (const bool is_last : {false, true}) {
        display().drawString({4, 4}, "next");
        display().swapBuffers();
        display().drawString({4, 4}, "next");
        EXPECT_EQ(display().saveScreenshot("picture.png"), 0);
        is_last ? display().shutDown() : void(display().swapBuffers());
        sf::Image saved;
        ASSERT_TRUE(saved.loadFromFile("picture.png"));
        EXPECT_EQ(test::difference(saved, drawn), 0);
    }
}

TEST_F(DisplayManagerTest, processes_may_end_with_an_open_window) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            startDisplay();
            display().drawString({3, 3}, "good night");
            sv::Shape().draw({5, 5});
            display().swapBuffers();
            std::exit(7);
        },
        testing::ExitedWithCode(7), "");
}

TEST_F(DisplayManagerTest, shakes_stay_in_range) {
    startDisplay();
    const auto next_glyph = [] {
        display().swapBuffers();
        display().drawCh({10, 10}, '|', sv::GREEN);
        return test::extentOf(sf::Color::Green, picture());
    };
    const Extent still = next_glyph();
    const Extent moved{still.left + 1, still.top + 1, still.right + 1, still.bottom + 1};
    display().setShake(5, 5, -1);
    EXPECT_EQ(next_glyph(), still);
    display().setShake(-1, -1, 1); // As 0.
    EXPECT_EQ(next_glyph(), moved);
    EXPECT_EQ(next_glyph(), still) << "after its one frame";
    display().setShake(2147483647, 2147483647, 2147483647);
    EXPECT_EQ(display().swapBuffers(), 0);
}

TEST_F(DisplayManagerTest, windows_of_any_size_show_the_grid) {
    server.emplace(1280, 1024);
    // A mode that the screen lacks: the window gets the whole screen instead.
    configure("window_style:fullscreen,window_horizontal_pixels:640,window_vertical_pixels:512,"
              "window_horizontal_chars:64,window_vertical_chars:16");
    ASSERT_EQ(display().startUp(), 0);
    ASSERT_EQ(display().getWindow()->getSize(), sf::Vector2u(1280, 1024));
    // Twice as large: a cell of 10 by 32 shows as 20 by 64.
    EXPECT_EQ(erasedBy({0, 0}), (Extent{0, 13, 17, 76}));
    EXPECT_EQ(erasedBy({63, 15}), (Extent{1258, 973, 1277, 1023}));
    EXPECT_EQ(display().windowToSpaces(1278, 1022), (Vector{63.9F, 15.96875F}));
    display().shutDown();
    // Larger than the screen: shown whole all the same, in its proportions.
    configure("window_style:default,window_horizontal_pixels:2048,window_vertical_pixels:1536");
    ASSERT_EQ(display().startUp(), 0);
    EXPECT_EQ(erasedBy({63, 15}), (Extent{1258, 912, 1277, 959}));
    EXPECT_EQ(display().windowToSpaces(1260, 930), (Vector{63, 15.5F}));
}

} // namespace
