#include "display/DisplayManager.h"

#include "core/Config.h"
#include "core/LogManager.h"
#include "loop/GameManager.h"
#include "support/WindowTest.h"
#include "support/environment.h"
#include "world/Shape.h"
#include "world/WorldManager.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <filesystem>

namespace {

using sv::DisplayManager;
using sv::Vector;
using test::Extent;

constexpr char unable_to_open[] = "DisplayManager::startUp(): Unable to allocate window!";

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

    static sf::Image drawnFrame(const std::string &str, Vector pos, sv::Justification just) {
        EXPECT_EQ(display().swapBuffers(), 0);
        EXPECT_EQ(display().drawString(pos, str, just, sv::GREEN), 0);
        return picture();
    }

    /// How many lines of the log begin so.
    static int logCountBeginning(const std::string &text) {
        int count = 0;
        for (const std::string &line : logLines())
            count += line.rfind(text, 0) == 0 ? 1 : 0;
        return count;
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
        const sf::Image string = drawnFrame(str, {10, 5}, just);
        EXPECT_EQ(display().swapBuffers(), 0);
        for (int i = 0; str[i] != '\0'; ++i)
            display().drawCh({first + static_cast<float>(i), 5}, str[i], 0, 255, 0);
        EXPECT_EQ(test::difference(string, picture()).pixels, 0);
        EXPECT_NE(test::extentOf(sf::Color::Green, string), Extent());
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
    std::vector<std::string> expected(4, "DisplayManager not started!");
    EXPECT_EQ(logLines(), expected);

    test::clearEnvironment("DISPLAY");
    sv::Config::getInstance().loadConfig("headless:true,font_file:missing.ttf");
    ASSERT_EQ(display().startUp(), 0);
    draw_all();
    expected.push_back("DisplayManager::startUp(): not doing graphics since in headless mode.");
    EXPECT_EQ(logLines(), expected);
    EXPECT_EQ(display().getWindow(), nullptr);
}

TEST_F(DisplayManagerTest, conversions_are_logged_at_level_30_and_not_below) {
    startLog();
    for (const int level : {29, 30}) {
        sv::LogManager::getInstance().setLogLevel(level);
        EXPECT_EQ(sv::spacesToPixels({10, 2}), (Vector{128, 64}));
        EXPECT_EQ(sv::pixelsToSpaces({64, 16}), (Vector{5, 0.5F}));
    }
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
    int refused = 0;
    for (const auto &[name, arguments, settings] : cases) {
        SCOPED_TRACE(refused);
        configure(settings);
        if (name != nullptr)
            test::setEnvironment("DISPLAY", name);
        else
            server.emplace(800, 600, arguments);
        EXPECT_EQ(display().startUp(), -1);
        EXPECT_EQ(logCount(unable_to_open), ++refused);
        EXPECT_EQ(logCountBeginning("DisplayManager::startUp(): Note! "), refused);
        EXPECT_EQ(display().getWindow(), nullptr);
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
    int refused = 0;
    for (const char *settings : cases) {
        SCOPED_TRACE(settings);
        configure(settings + usual); // The first of two settings counts.
        EXPECT_EQ(display().startUp(), -1);
        EXPECT_EQ(logCount(unable_to_open), ++refused);
        EXPECT_EQ(sv::spacesToPixels({1, 1}), (Vector{12.8F, 32}));
    }
}

TEST_F(DisplayManagerTest, a_game_without_a_display_fails_to_start_and_shuts_down) {
    test::clearEnvironment("DISPLAY");
    sv::GameManager &game = sv::GameManager::getInstance();
    EXPECT_EQ(game.startUp(), -1);
    game.shutDown();
    for (const char *line : {unable_to_open, "Error starting display manager!", "engine stopped"})
        EXPECT_NE(logText().find(line), std::string::npos) << line;
}

TEST_F(DisplayManagerTest, a_missing_font_fails_the_start_and_a_later_one_succeeds) {
    startLog();
    server.emplace();
    sv::Config::getInstance().loadConfig("font_file:missing.ttf");
    EXPECT_EQ(display().startUp(), -1);
    EXPECT_EQ(logCount("DisplayManager::startUp(): Unable to load font from file 'missing.ttf'."),
              1);
    EXPECT_EQ(logCountBeginning("SFML: Failed to load font \"missing.ttf\""), 1);
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
        EXPECT_EQ(display().drawString({3, 3}, "again"), 0);
        EXPECT_EQ(display().swapBuffers(), 0);
        display().shutDown();
        EXPECT_EQ(display().getWindow(), nullptr);
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
        {"-3", "Font scale -3 makes text -38.4 pixels high. Using 1."},
        {"nan", "Font scale nan makes text nan pixels high. Using 1."},
        {"1e30", "Font scale 1e+30 makes text 1.28e+31 pixels high. Using 1000."},
    };
    for (const auto &[scale, made] : cases) {
        SCOPED_TRACE(scale);
        configure(std::string("font_scale:") + scale);
        ASSERT_EQ(display().startUp(), 0);
        EXPECT_EQ(logCount(std::string("DisplayManager::startUp(): Warning! ") + made), 1);
        EXPECT_EQ(display().drawString({1, 1}, "text of any height"), 0);
        sv::Shape shape;
        shape.setType(sv::SQUARE); // It is divided by the scale.
        shape.draw({2, 2});
        EXPECT_EQ(display().swapBuffers(), 0);
        display().shutDown();
    }
}

TEST_F(DisplayManagerTest, a_scale_of_zero_shakes_by_one_pixel_and_others_stay_in_range) {
    startDisplay();
    const auto glyph_at = [&] {
        sv::DisplayManager::getInstance().drawCh({10, 10}, '|', sv::GREEN);
        return test::extentOf(sf::Color::Green, picture());
    };
    display().swapBuffers();
    const Extent still = glyph_at();
    ASSERT_NE(still, Extent());
    display().setShake(-1, -1, 1); // As 0.
    display().swapBuffers();
    EXPECT_EQ(glyph_at(),
              (Extent{still.left + 1, still.top + 1, still.right + 1, still.bottom + 1}));
    display().swapBuffers();
    EXPECT_EQ(glyph_at(), still) << "after its one frame";
    display().setShake(6, 0, 50);
    for (int frame = 0; frame < 50; ++frame) {
        display().swapBuffers();
        EXPECT_LE(std::abs(glyph_at().left - still.left - 1), 6);
    }
    display().swapBuffers();
    EXPECT_EQ(glyph_at(), still);
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
