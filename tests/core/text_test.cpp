#include "selvane/core/text.h"

#include "selvane/core/Color.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/attributes.h"
#include "selvane/core/utf8.h"
#include "support/EngineTest.h"

#include <climits>
#include <cmath>

namespace sv {
namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();

class Text : public test::EngineTest {};

TEST_F(Text, match_finds_the_value_of_a_key) {
    const struct {
        const char *text, *key, *value;
    } cases[] = {
        {"a:1,b:2", "b", "2"},   {" a : 1 ,\n\tb :\v x \f y\r,", "b", "xy"},
        {"a:1:2", "a", "1"},     {"a:1,a:2", "a", "1"},
        {"a:,a:2", "a", ""},     {"a:1", "A", ""},
        {"ab:1,b:2", "b", "2"},  {",,a:1,,b:2", "b", "2"},
        {":a:1", "a", "1"},      {"a:1,::,b:2", "a", "1"},
        {"a:1,::,b:2", "b", ""}, // An element of colons alone ends the text.
        {"", "a", "1"},          // An empty text is the one before.
        {" ", "a", ""},          {"", "a", ""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(match(c.text, c.key), c.value) << c.key << " in '" << c.text << "'";
}

TEST_F(Text, match_logs_every_parse) {
    startLog(24);
    match("a: 1,b", "b");
    LogManager::getInstance().setLogLevel(25);
    match("a: 1,b", "b");
    EXPECT_EQ(said(), "match(\"a: 1,b\", \"b\")\n"
                      "match(): number of elements allocated is 2\n"
                      "\titem number 0\n\tkey a\n\tval 1\n"
                      "\titem number 1\n\tkey b\n\tval \n"
                      "match(): parsed.\n"
                      "match(): Looking for match 'b' among 2 items.\n");
    LogManager::getInstance().setLogLevel(28);
    match("a:1,b", "b");
    EXPECT_NE(logText().find("\n\tp_element is 'a:1' ("), std::string::npos);
}

TEST_F(Text, attribute_text_is_kept_exactly) {
    const struct {
        const char *text, *key, *value;
    } cases[] = {
        {"id:1,view_string: High  score: ,", "view_string", " High  score: "},
        {"a:1,a:2,", "a", "1"},
        {"\n a :1,", "a", "1"},
        {"aa:1,a:2,", "a", "2"},
        {"b:a:1,", "a", ""},
        {"a:,b:2", "a", ""},
        {",,", "", ""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(attributeText(c.text, c.key), c.value) << c.key << " in '" << c.text << "'";
}

TEST_F(Text, integers_are_read_at_the_start) {
    const std::pair<const char *, int> cases[] = {
        {"20headless", 20},
        {" \t+7", 7},
        {"x1", 0},
        {"+-5", 0},
        {"2147483647", INT_MAX},
        {"-2147483648", INT_MIN},
        {"2147483648", INT_MAX},
        {"+99999999999999999999", INT_MAX},
        {" -99999999999999999999", INT_MIN},
    };
    for (const auto &[text, value] : cases)
        EXPECT_EQ(parseInt(text), value) << "'" << text << "'";
}

TEST_F(Text, floats_are_read_at_the_start) {
    const std::string zeros(400, '0');
    const std::pair<std::string, float> cases[] = {
        {"", 0},
        {" 2.5cells", 2.5F},
        {"1e3", 1000},
        {"3e38", 3e38F},
        {"4e38", infinite},
        {"-1E999", -infinite},
        {"1e-999", 0},
        {"-Infinity", -infinite},
        {"-0." + zeros + "1", 0},
        {"1" + zeros + "e-50", infinite},
        {"-1" + zeros + "e-99999999999", 0},
        {"0." + zeros + "1e400", 0.1F},
    };
    for (const auto &[text, value] : cases)
        EXPECT_EQ(parseFloat(text), value) << "'" << text << "'";
    EXPECT_TRUE(std::isnan(parseFloat("nan")));
}

TEST_F(Text, utf8_shows_each_bad_piece_once) {
    const std::pair<std::string_view, std::u32string_view> cases[] = {
        {"aM\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80", U"aM\u00FC\u20AC\U0001F600"},
        {"\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF4\x8F\xBF\xBF",
         U"\x7F\u0080\u07FF\u0800\uFFFF\U0010FFFF"},
        {"\x80x\xFFy\xC3", U"\uFFFDx\uFFFDy\uFFFD"},
        {"\xE2\x82z\xF0\x9F\x98", U"\uFFFDz\uFFFD"},                 // Cut.
        {"\xC0\xAF\xE0\x9F\xBF", U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"}, // Overlong.
        {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},                     // A surrogate.
        {"\xF4\x90\x80\x80\xF5", U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"}, // Too large.
        {"\xF1\x80\x80\xE1\x80\xC2\x62", U"\uFFFD\uFFFD\uFFFD\x62"},
    };
    for (const auto &[bytes, code_points] : cases) {
        EXPECT_EQ(fromUtf8(bytes), code_points) << bytes;
        const bool is_valid = code_points.find(REPLACEMENT_CHARACTER) == std::u32string_view::npos;
        EXPECT_EQ(validUtf8Length(bytes) == bytes.size(), is_valid) << bytes;
        EXPECT_EQ(toUtf8(code_points) == bytes, is_valid) << bytes;
        EXPECT_EQ(fromUtf8(toUtf8(code_points)), code_points) << bytes;
    }
    EXPECT_EQ(toUtf8(std::u32string{0xD800, 0x110000}), "\uFFFD\uFFFD");
}

TEST_F(Text, rgb_has_six_digits) {
    EXPECT_EQ(rgbFromText("#0aF102"), Rgb(10, 241, 2));
    EXPECT_EQ(toString(Rgb(10, 241, 2)), "#0af102");
    for (const char *text : {"", "#", "#12345", "#1234567", "0aF102 ", "#12345g", "#-12345"})
        EXPECT_EQ(rgbFromText(text), std::nullopt) << text;
}

TEST_F(Text, colors_have_names) {
    startLog(5);
    unsigned char r = 1;
    unsigned char g = 2;
    unsigned char b = 3;
    for (const int number : {-1, int{CUSTOM}, 9}) {
        colorToRGB(Color(number), r, g, b);
        EXPECT_EQ(colorToString(Color(number)), "Unknown color");
    }
    EXPECT_EQ(r * 100 + g * 10 + b, 123) << "changed by what is not a colour";
    EXPECT_EQ(logText(), "colorToRGB(): Color -1 not supported.\n"
                         "colorToRGB(): Color 9 not supported.\n");
    EXPECT_EQ(colorToString(YELLOW), "Yellow");
    EXPECT_EQ(colorFromName("yellow"), YELLOW);
    EXPECT_EQ(colorFromName("Yellow"), std::nullopt);
}

} // namespace
} // namespace sv
