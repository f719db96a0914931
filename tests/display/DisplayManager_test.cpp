#include "selvane/display/DisplayManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/sfmlColor.h"
#include "selvane/world/Shape.h"
#include "selvane/world/WorldManager.h"
#include "support/WindowTest.h"
#include "support/environment.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <filesystem>

namespace {

using sv::DisplayManager;
using sv::Vector;
using test::Extent;

constexpr char unable_to_open[] = "DisplayManager::startUp(): Unable to allocate window!\n"
                                  "DisplayManager::startUp(): Note! ";

class DisplayManagerTest : public test::WindowTest {
  protected:
    static DisplayManager &display() { return DisplayManager::getInstance(); }

    /// Fills the window, then draws a blank at that position; what stays unfilled.
    static Extent erasedBy(Vector world_pos, char ch = ' ') {
        sf::RenderWindow &window = *display().getWindow();
        window.clear(sf::Color::White);
        EXPECT_EQ(display().drawCh(world_pos, ch, sv::WHITE), 0);
        return test::extentOf(sf::Color::Black, picture());
    }

    /// Expects the start to fail, with a line that begins with what is said of it.
    void expectRefused(const std::string &reason) {
        EXPECT_EQ(display().startUp(), -1);
        EXPECT_EQ(display().getWindow(), nullptr);
        const std::string lines = said();
        EXPECT_NE(lines.find(reason), std::string::npos) << lines;
    }
};

TEST_F(DisplayManagerTest, the_rectangle_behind_a_character_lies_left_of_and_below_its_cell) {
    startDisplay();
    // Pixels whose middle lies between -1.28 and 11.52, and between 6.4 and 38.4.
    EXPECT_EQ(erasedBy({0, 0}), (Extent{0, 6, 11, 37}));
    EXPECT_EQ(erasedBy({10, 3}), (Extent{127, 102, 139, 133}));
    sv::WorldManager::getInstance().setView({{9, 2.5F}, 80, 24});
    EXPECT_EQ(erasedBy({10, 3}), (Extent{12, 22, 23, 53}));
    for (const char blank : {'\t', '\n', '\r'})
        EXPECT_EQ(erasedBy({10, 3}, blank), (Extent{12, 22, 23, 53}));
}

TEST_F(DisplayManagerTest, a_string_stands_left_of_around_or_right_of_its_position) {
    startDisplay();
    struct {
        const char *str;
        sv::Justification just;
        float first;
    } const cases[] = {
        {"abcde", sv::LEFT_JUSTIFIED, 10}, {"abcde", sv::CENTER_JUSTIFIED, 8},
        {"abcd", sv::CENTER_JUSTIFIED, 8}, {"abcd", sv::RIGHT_JUSTIFIED, 6},
        {"a", sv::CENTER_JUSTIFIED, 10},   {"a", sv::RIGHT_JUSTIFIED, 9},
    };
    for (const auto &[str, just, first] : cases) {
        SCOPED_TRACE(std::string(str) + " " + std::to_string(just));
        display().swapBuffers();
        EXPECT_EQ(display().drawString({10, 5}, str, just, sv::GREEN), 0);
        const sf::Image string = picture();
        display().swapBuffers();
        for (int i = 0; str[i] != '\0'; ++i)
            display().drawCh({first + static_cast<float>(i), 5}, str[i], 0, 255, 0);
        EXPECT_EQ(test::difference(string, picture()).pixels, 0);
        EXPECT_NE(test::extentOf(sf::Color::Green, string), Extent());
    }
}

TEST_F(DisplayManagerTest, a_colour_that_the_library_does_not_have_is_white_with_a_word) {
    startLog(5);
    for (const int number : {-1, int{sv::CUSTOM}, 9})
        EXPECT_EQ(sv::colorToSFML(sv::Color(number)), sf::Color::White);
    EXPECT_EQ(logText(), "colorToSFML(): Color -1 not supported.\n"
                         "colorToSFML(): Color is CUSTOM.\n"
                         "colorToSFML(): Color 9 not supported.\n");
}

TEST_F(DisplayManagerTest, the_title_is_utf_8) {
    server.emplace();
    startLog();
    for (const std::string title : {"Caf\u00e9", "\u4e16\u754c", "Two\u00a0Words"}) {
        configure("window_title:" + title);
        ASSERT_EQ(display().startUp(), 0);
        EXPECT_EQ(server->windowTitle(), title);
        display().shutDown();
    }
    for (const std::string noise : {"Caf\xe9", "\xff\xfe\xfd\xfc", "\xed\xb0\x80", "\xc0\x80"}) {
        configure("window_title:Caf\u00e9" + noise);
        ASSERT_EQ(display().startUp(), 0);
        EXPECT_TRUE(server->windowTitle().starts_with("Caf\u00e9"));
        EXPECT_EQ(erasedBy({0, 0}), (Extent{0, 6, 11, 37}));
        display().shutDown();
    }
}

TEST_F(DisplayManagerTest, a_new_frame_begins_with_the_configured_background) {
    startDisplay("window_background_color:magenta");
    display().swapBuffers();
    EXPECT_EQ(test::extentOf(sf::Color::Magenta, picture()), (Extent{0, 0, 1023, 767}));
}

TEST_F(DisplayManagerTest, refuses_to_draw_silently_when_headless_and_aloud_before_the_start) {
    const auto draw_all = [] {
        EXPECT_EQ(display().drawCh({0, 0}, 'x', sv::RED), -1);
        EXPECT_EQ(display().drawCh({0, 0}, 'x', 1, 2, 3), -1);
        EXPECT_EQ(display().drawString({0, 0}, "xyz", sv::CENTER_JUSTIFIED, sv::RED), -1);
        EXPECT_EQ(display().swapBuffers(), -1);
    };
    startLog(1);
    draw_all();
    EXPECT_EQ(logLines(), std::vector<std::string>(4, "DisplayManager not started!"));

    said();
    test::clearEnvironment("DISPLAY");
    sv::Config::getInstance().loadConfig("headless:true,font_file:missing.ttf");
    ASSERT_EQ(display().startUp(), 0);
    draw_all();
    EXPECT_EQ(said(), "DisplayManager::startUp(): not doing graphics since in headless mode.\n");
}

TEST_F(DisplayManagerTest, conversions_are_logged_at_level_30) {
    startLog(30);
    EXPECT_EQ(sv::spacesToPixels({10, 2}), (Vector{128, 64}));
    EXPECT_EQ(sv::pixelsToSpaces({64, 16}), (Vector{5, 0.5F}));
    EXPECT_EQ(logText(), "spacesToPixels(int): spaces (10.00,2.00) = pixels (128.00,64.00)\n"
                         "pixelsToSpaces(): pixels (64.00,16.00) = spaces (5.00,0.50)\n");
}

TEST_F(DisplayManagerTest, a_display_that_no_window_fits_on_is_refused_with_advice) {
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

TEST_F(DisplayManagerTest, a_window_opens_on_a_display_that_begins_anew_with_each_visitor) {
    server.emplace(800, 600, std::vector<std::string>(), false);
    configure("");
    ASSERT_EQ(display().startUp(), 0);
    EXPECT_EQ(erasedBy({0, 0}), (Extent{0, 6, 11, 37}));
}

TEST_F(DisplayManagerTest, sizes_that_no_window_has_are_refused) {
    startLog();
    server.emplace();
    const char *const cases[] = {
        "window_horizontal_pixels:0",
        "window_vertical_pixels:70000",
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

TEST_F(DisplayManagerTest, a_missing_font_fails_the_start_and_a_later_one_succeeds) {
    startLog();
    server.emplace();
    sv::Config::getInstance().loadConfig("font_file:missing.ttf");
    EXPECT_EQ(display().startUp(), -1);
    EXPECT_EQ(logLines().front().rfind("SFML: Failed to load font \"missing.ttf\"", 0), 0U);
    expectLogged({"DisplayManager::startUp(): Unable to load font from file 'missing.ttf'."});
    display().shutDown();
    EXPECT_EQ(display().getWindow(), nullptr);
    configure("");
    ASSERT_EQ(display().startUp(), 0);
    EXPECT_EQ(erasedBy({0, 0}), (Extent{0, 6, 11, 37}));
}

TEST_F(DisplayManagerTest, a_font_file_that_is_none_fails_the_start_with_its_name) {
    startLog();
    server.emplace();
    writeFile("empty.ttf", "");
    writeFile("noise.ttf", std::string(5000, 'x'));
    std::filesystem::copy_file(test::FONT, "half.otf");
    std::filesystem::resize_file("half.otf", std::filesystem::file_size("half.otf") / 2);
    std::filesystem::create_directory("folder.ttf");
    for (const std::string file : {"empty.ttf", "noise.ttf", "half.otf", "folder.ttf"}) {
        sv::Config::getInstance().loadConfig("font_file:" + file);
        EXPECT_EQ(display().startUp(), -1) << file;
        EXPECT_EQ(
            logCount("DisplayManager::startUp(): Unable to load font from file '" + file + "'."),
            1);
        display().shutDown();
    }
}

TEST_F(DisplayManagerTest, a_font_without_the_size_is_told_of) {
    server.emplace();
    startLog();
    // One letter, eight pixels high.
    writeFile("letter.bdf",
              "STARTFONT 2.1\nFONT -test-letter-medium-r-normal--8-80-75-75-c-80-iso10646-1\n"
              "SIZE 8 75 75\nFONTBOUNDINGBOX 8 8 0 0\nSTARTPROPERTIES 4\n"
              "CHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nFONT_ASCENT 8\n"
              "FONT_DESCENT 0\nENDPROPERTIES\nCHARS 1\nSTARTCHAR A\nENCODING 65\n"
              "SWIDTH 500 0\nDWIDTH 8 0\nBBX 8 8 0 0\nBITMAP\n18\n24\n42\n42\n7E\n42\n42\n42\n"
              "ENDCHAR\nENDFONT\n");
    configure("font_file:letter.bdf,");
    EXPECT_EQ(display().startUp(), 0);
    EXPECT_NE(logText().find("SFML: Failed to set bitmap font size to "), std::string::npos);
}

TEST_F(DisplayManagerTest, characters_larger_than_their_cells_are_told_of) {
    server.emplace();
    startLog();
    const std::string shipped = "window_horizontal_pixels:1088,window_vertical_pixels:720,"
                                "window_horizontal_chars:100,window_vertical_chars:40,font_scale:";
    const std::string square = "window_horizontal_pixels:800,window_vertical_pixels:480,"
                               "window_horizontal_chars:50,window_vertical_chars:30,font_scale:";
    const struct {
        std::string cells, too_large, fitting;
    } cases[] = {{"font_scale:", "2.5", "2.04"}, {shipped, "3", "1.84"}, {square, "2", "1.13"}};
    for (const auto &[cells, too_large, fitting] : cases) {
        SCOPED_TRACE(cells);
        configure(cells + too_large);
        ASSERT_EQ(display().startUp(), 0);
        EXPECT_EQ(said(), "DisplayManager::startUp(): Warning! The font's characters are larger "
                          "than their cells and cut by their neighbours. A font_scale of " +
                              fitting + " would fit.\n");
        display().shutDown();
        configure(cells + fitting);
        ASSERT_EQ(display().startUp(), 0);
        EXPECT_EQ(said(), "");
        display().shutDown();
    }
}

TEST_F(DisplayManagerTest, starts_and_stops_again_and_again_in_any_size) {
    server.emplace();
    startLog();
    for (const int cell : {30, 90, 30}) {
        const std::string side = std::to_string(10 * cell);
        configure("window_horizontal_chars:10,window_vertical_chars:10,window_horizontal_pixels:" +
                  side + ",window_vertical_pixels:" + side);
        ASSERT_EQ(display().startUp(), 0);
        EXPECT_EQ(display().startUp(), -1) << "started already";
        const Extent erased = erasedBy({1, 1});
        EXPECT_EQ(erased.right - erased.left + 1, cell);
        EXPECT_EQ(erased.bottom - erased.top + 1, cell);
        sv::Shape().draw({5, 5});
        display().shutDown();
    }
    EXPECT_EQ(logCount("DisplayManager::startup(): Warning! DisplayManager already started."), 3);
}

TEST_F(DisplayManagerTest, a_process_may_end_with_its_window_open) {
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

TEST_F(DisplayManagerTest, a_font_scale_that_gives_no_text_is_reported_and_harmless) {
    server.emplace();
    startLog();
    struct {
        const char *scale;
        const char *made;
    } const cases[] = {
        {"0", "Font scale 0 makes text 0 pixels high. Using 1."},
        {"nan", "Font scale nan makes text nan pixels high. Using 1."},
        {"1e30", "Font scale 1e+30 makes text 1.28e+31 pixels high. Using 1000."},
    };
    for (const auto &[scale, made] : cases) {
        SCOPED_TRACE(scale);
        configure(std::string("font_scale:") + scale);
        ASSERT_EQ(display().startUp(), 0);
        expectLogged({std::string("DisplayManager::startUp(): Warning! ") + made});
        EXPECT_EQ(display().drawString({1, 1}, "text of any height"), 0);
        EXPECT_EQ(display().swapBuffers(), 0);
        display().shutDown();
    }
}

TEST_F(DisplayManagerTest, a_scale_of_zero_shakes_by_one_pixel_and_others_stay_in_range) {
    startDisplay();
    const auto next_glyph = [] {
        display().swapBuffers();
        display().drawCh({10, 10}, '|', sv::GREEN);
        return test::extentOf(sf::Color::Green, picture());
    };
    const Extent still = next_glyph();
    ASSERT_NE(still, Extent());
    display().setShake(-1, -1, 1); // As 0.
    EXPECT_EQ(next_glyph(),
              (Extent{still.left + 1, still.top + 1, still.right + 1, still.bottom + 1}));
    EXPECT_EQ(next_glyph(), still) << "after its one frame";
    display().setShake(6, 0, 50);
    for (int frame = 0; frame < 50; ++frame)
        EXPECT_LE(std::abs(next_glyph().left - still.left - 1), 6);
    EXPECT_EQ(next_glyph(), still);
    display().setShake(2147483647, 2147483647, 2147483647);
    EXPECT_EQ(display().swapBuffers(), 0);
}

TEST_F(DisplayManagerTest, a_window_of_another_size_shows_the_whole_grid) {
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
    // Larger than the screen: drawn whole all the same.
    configure("window_style:default,window_horizontal_pixels:2048,window_vertical_pixels:1536");
    ASSERT_EQ(display().startUp(), 0);
    EXPECT_EQ(erasedBy({63, 15}), (Extent{2013, 1459, 2044, 1535}));
}

} // namespace
