// What global objects of a program do before main() and when it is over.

#include "selvane/core/text.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

namespace sv {
namespace {

/// When main() is over, says on standard error what it then finds. It is there before the engine is
/// first used, so everything that the engine destroys at the end is gone by then.
struct LastWords {
    ~LastWords() {
        if (are_wanted)
            std::fprintf(stderr, "%s\n", match("a:1,b:a value that is found after", "b").c_str());
    }

    bool are_wanted = false;
} last_words;

const std::string found_before_main = match("a:1,b:a value that is found before", "b");

TEST(GlobalObject, searches_texts_before_and_after_main) {
    EXPECT_EQ(found_before_main, "avaluethatisfoundbefore");
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            last_words.are_wanted = true;
            std::exit(0);
        },
        testing::ExitedWithCode(0), "avaluethatisfoundafter");
}

} // namespace
} // namespace sv
