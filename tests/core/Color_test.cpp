#include "selvane/core/Color.h"

#include "support/EngineTest.h"

#include <tuple>

namespace sv {
namespace {

class Colors : public test::EngineTest {
  protected:
    using Rgb = std::tuple<int, int, int>;

    static Rgb rgbOf(int number) {
        unsigned char r = 1;
        unsigned char g = 2;
        unsigned char b = 3;
        colorToRGB(Color(number), r, g, b);
        return {r, g, b};
    }
};

TEST_F(Colors, have_a_name_and_components_by_their_number) {
    const struct {
        const char *name;
        Rgb rgb;
    } colors[] = {
        {"Black", {0, 0, 0}},      {"Red", {255, 0, 0}},       {"Green", {0, 255, 0}},
        {"Yellow", {255, 255, 0}}, {"Blue", {0, 0, 255}},      {"Magenta", {255, 0, 255}},
        {"Cyan", {0, 255, 255}},   {"White", {255, 255, 255}},
    };
    for (int number = 0; const auto &c : colors) {
        EXPECT_EQ(colorToString(Color(number)), c.name);
        EXPECT_EQ(rgbOf(number++), c.rgb) << c.name;
    }
}

TEST_F(Colors, a_number_that_is_no_colour_changes_nothing_and_is_told_unless_it_is_custom) {
    startLog(5);
    for (const int number : {-1, int{CUSTOM}, 9}) {
        EXPECT_EQ(rgbOf(number), (Rgb{1, 2, 3}));
        EXPECT_EQ(colorToString(Color(number)), "Unknown color");
    }
    EXPECT_EQ(logText(), "colorToRGB(): Color -1 not supported.\n"
                         "colorToRGB(): Color 9 not supported.\n");
}

} // namespace
} // namespace sv
