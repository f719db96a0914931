#include "core/Color.h"

#include "support/EngineTest.h"

#include <tuple>

namespace sv {

namespace {

class Colors : public test::EngineTest {
  protected:
    using Rgb = std::tuple<int, int, int>;

    static Rgb rgbOf(Color c) {
        unsigned char r = 1;
        unsigned char g = 2;
        unsigned char b = 3;
        colorToRGB(c, r, g, b);
        return {r, g, b};
    }

    static constexpr Rgb unchanged{1, 2, 3};
};

TEST_F(Colors, have_a_number_a_name_and_components) {
    struct Case {
        int number;
        Color color;
        const char *name;
        Rgb rgb;
    };
    const Case cases[] = {
        {0, BLACK, "Black", {0, 0, 0}},          {1, RED, "Red", {255, 0, 0}},
        {2, GREEN, "Green", {0, 255, 0}},        {3, YELLOW, "Yellow", {255, 255, 0}},
        {4, BLUE, "Blue", {0, 0, 255}},          {5, MAGENTA, "Magenta", {255, 0, 255}},
        {6, CYAN, "Cyan", {0, 255, 255}},        {7, WHITE, "White", {255, 255, 255}},
        {8, CUSTOM, "Unknown color", unchanged},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(static_cast<int>(c.color), c.number);
        EXPECT_EQ(colorToString(c.color), c.name);
        EXPECT_EQ(rgbOf(c.color), c.rgb);
    }
}

TEST_F(Colors, a_number_that_is_no_colour_is_reported_and_changes_nothing) {
    startLog(5);
    for (const int number : {-1, 9}) {
        EXPECT_EQ(rgbOf(Color(number)), unchanged);
        EXPECT_EQ(colorToString(Color(number)), "Unknown color");
        EXPECT_EQ(logCount("colorToRGB(): Color " + std::to_string(number) + " not supported."), 1);
    }
    EXPECT_EQ(rgbOf(CUSTOM), unchanged);
    EXPECT_EQ(logText().find("Color 8"), std::string::npos) << "a custom colour is nothing to say";
}

} // namespace

} // namespace sv
