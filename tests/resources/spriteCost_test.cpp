// What a sprite file can make the engine take from the heap.

#include "selvane/resources/ResourceManager.h"
#include "support/EngineTest.h"
#include "support/allocations.h"

namespace {

class SpriteCost : public test::EngineTest {
  protected:
    SpriteCost() {
        startLog();
        resources.startUp();
    }

    /// The bytes that it takes to refuse this file.
    long costOf(const std::string &text) {
        writeFile("spr.txt", text);
        const long before = test::allocatedBytes();
        EXPECT_EQ(resources.loadSprite("spr.txt", "it"), -1);
        return test::allocatedBytes() - before;
    }

    sv::ResourceManager &resources = sv::ResourceManager::getInstance();
};

TEST_F(SpriteCost, a_claim_takes_no_memory) {
    const std::string million = "1000000";
    for (const std::string &text :
         {million + "\n1\n1\n0\nred\na\n", "1\n" + million + "\n1\n0\nred\na\n",
          "1\n1\n" + million + "\n0\nred\na\n",
          "<HEADER>\nframes " + million + "\nwidth 1\nheight 1\n</HEADER>\n<BODY>\na\nend\n" +
              "</BODY>\n<FOOTER>\nversion 1\n</FOOTER>\n"}) {
        EXPECT_LT(costOf(text), 100'000) << text;
    }
}

TEST_F(SpriteCost, a_long_line_takes_a_few_times_its_length) {
    constexpr long length = 8 * 1024 * 1024;
    EXPECT_LT(costOf("<HEADER>\n" + std::string(length, 'x')), 5 * length);
}

TEST_F(SpriteCost, what_is_too_large_takes_no_memory) {
    constexpr std::size_t most = 16 * 1024 * 1024;
    std::string lines = "<HEADER>\nframes 1\nwidth 1\nheight 1\n</HEADER>\n<BODY>\n";
    while (lines.size() <= most)
        lines += "a\n";
    EXPECT_LT(costOf(lines), 100'000);
    EXPECT_EQ(logCount("RM::loadSprite(): Error! File 'spr.txt' has more than 16777216 bytes."), 1);
}

} // namespace
