// What a search in a text does when there is no memory for it.

#include "selvane/core/text.h"
#include "support/EngineTest.h"
#include "support/allocations.h"

namespace sv {
namespace {

class MatchMemory : public test::EngineTest {};

TEST_F(MatchMemory, that_is_missing_is_told_and_finds_nothing) {
    const std::string value(100, 'x');
    const std::string text = "a:1,b:" + value;
    const std::string key = "b";
    startLog();
    int granted = 0; // Blocks, from the first search of the process on.
    for (std::string found; found != value; ++granted) {
        test::failAfter(granted);
        found = match(text, key);
        test::failAfter(-1);
        if (found != value) {
            EXPECT_EQ(found, "");
            EXPECT_EQ(said(), "match(): unable to allocate key array!\n") << granted;
        }
        match("another text", key);
    }
    EXPECT_GT(granted, 5) << "nothing was refused";
}

} // namespace
} // namespace sv
