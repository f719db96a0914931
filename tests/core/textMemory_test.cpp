// match() without memory.

#include "selvane/core/text.h"
#include "support/EngineTest.h"
#include "support/allocations.h"

namespace sv {
namespace {

class MatchMemory : public test::EngineTest {};

TEST_F(MatchMemory, missing_memory_is_logged) {
    const std::string value(100, 'x');
    const std::string text = "a:1,b:" + value;
    const std::string key = "b";
    startLog();
    int granted = 0; // Blocks of memory.
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
