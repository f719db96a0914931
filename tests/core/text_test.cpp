#include "selvane/core/text.h"

#include "selvane/core/LogManager.h"
#include "support/EngineTest.h"

#include <climits>
#include <cmath>

namespace sv {
namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();

class Match : public test::EngineTest {};

TEST_F(Match, finds_the_value_of_a_key) {
    const struct {
        const char *text, *key, *value;
    } cases[] = {
        {"a:1,b:2", "b", "2"},   {" a : 1 ,\n\tb :\v x \f y\r,", "b", "xy"},
        {"a:1:2", "a", "1"},     {"a:1,a:2", "a", "1"},
        {"a:,a:2", "a", ""},     {"a:1", "A", ""},
        {"ab:1,b:2", "b", "2"},  {",,a:1,,b:2", "b", "2"},
        {":a:1", "a", "1"},      {"a:1,::,b:2", "a", "1"},
        {"a:1,::,b:2", "b", ""}, // An element of colons alone ends the text.
        {":", "", ""},           {"  ", "a", ""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(match(c.text, c.key), c.value) << c.key << " in '" << c.text << "'";
}

TEST_F(Match, an_empty_text_asks_the_last_one_again) {
    EXPECT_EQ(match("", "a"), "");
    EXPECT_EQ(match("a:1,b:2", "b"), "2");
    EXPECT_EQ(match("", "a"), "1");
    EXPECT_EQ(match("", "b"), "2");
    EXPECT_EQ(match(" ", "a"), "") << "blanks are a text of their own";
    EXPECT_EQ(match("", "a"), "");
}

TEST_F(Match, a_text_that_comes_again_is_told_of_again) {
    startLog(0);
    EXPECT_EQ(match("a:1", "a"), "1");
    EXPECT_EQ(match(":", "a"), "") << "an end of the parse is kept, too";
    EXPECT_EQ(match("a:1", "a"), "1");
    LogManager::getInstance().setLogLevel(25);
    match("a:1", "a");
    EXPECT_EQ(logCount("match(): parsed."), 1);
}

TEST_F(Match, tells_how_it_parsed_and_at_its_highest_level_every_comparison) {
    startLog(25);
    match("a: 1,b", "b");
    EXPECT_EQ(logText(), "match(\"a: 1,b\", \"b\")\n"
                         "match(): number of elements allocated is 2\n"
                         "\titem number 0\n\tkey a\n\tval 1\n"
                         "\titem number 1\n\tkey b\n\tval \n"
                         "match(): parsed.\n"
                         "match(): Looking for match 'b' among 2 items.\n");
    LogManager::getInstance().setLogLevel(28);
    match("a:1,b", "b");
    expectLogged({"\t0  a : 1", "\t1  b : ", "match(): 0: a == b?", "match(): 1: b == b?"});
    EXPECT_NE(logText().find("\n\tp_element is 'a:1' ("), std::string::npos);
    EXPECT_NE(logText().find("\n\ttoken is 'a' ("), std::string::npos);
    match("::,b:2", "b");
    EXPECT_NE(logText().find("\n\tp_element is '::' ("), std::string::npos);
    EXPECT_NE(logText().find("\n\ttoken is '' ("), std::string::npos);
}

TEST(ParseInt, reads_the_integer_at_the_start) {
    const struct {
        const char *text;
        int value;
    } cases[] = {
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
    for (const auto &c : cases)
        EXPECT_EQ(parseInt(c.text), c.value) << "'" << c.text << "'";
}

TEST(ParseFloat, reads_the_number_at_the_start) {
    const struct {
        const char *text;
        float value;
    } cases[] = {
        {"", 0},         {" 2.5cells", 2.5F}, {"1e3", 1000},
        {"3e38", 3e38F}, {"4e38", infinite},  {"-1E999", -infinite},
        {"1e-999", 0},   {"inf", infinite},   {"-Infinity", -infinite},
    };
    for (const auto &c : cases)
        EXPECT_EQ(parseFloat(c.text), c.value) << "'" << c.text << "'";
    EXPECT_TRUE(std::isnan(parseFloat("nan")));
    const std::string zeros(400, '0');
    EXPECT_EQ(parseFloat("-0." + zeros + "1"), 0);
    EXPECT_EQ(parseFloat("1" + zeros + "e-50"), infinite);
    EXPECT_EQ(parseFloat("-1" + zeros + "e-99999999999"), 0);
    EXPECT_EQ(parseFloat("0." + zeros + "1e400"), 0.1F);
}

TEST(ToString, writes_floats_in_six_digits_at_most) {
    const struct {
        float value;
        const char *text;
    } cases[] = {
        {2, "2"},        {-0.5F, "-0.5"},  {1.0F / 3, "0.333333"}, {100000, "100000"},
        {1e6F, "1e+06"}, {1e-5F, "1e-05"}, {infinite, "inf"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(toString(c.value), c.text);
    EXPECT_EQ(toString(INT_MIN), "-2147483648");
}

} // namespace
} // namespace sv
