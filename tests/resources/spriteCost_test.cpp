// What a sprite file can make the engine take from the heap.

#include "resources/ResourceManager.h"
#include "support/EngineTest.h"
#include "support/allocations.h"

namespace {

class SpriteCost : public test::EngineTest {};

TEST_F(SpriteCost, a_claim_takes_no_memory) {
    startLog();
    sv::ResourceManager &resources = sv::ResourceManager::getInstance();
    resources.startUp();
    const std::string million = "1000000";
    for (const std::string &text :
         {million + "\n1\n1\n0\nred\na\n", "1\n" + million + "\n1\n0\nred\na\n",
          "1\n1\n" + million + "\n0\nred\na\n",
          "<HEADER>\nframes " + million + "\nwidth 1\nheight 1\n</HEADER>\n<BODY>\na\nend\n" +
              "</BODY>\n<FOOTER>\nversion 1\n</FOOTER>\n"}) {
        writeFile("spr.txt", text);
        const long before = test::allocatedBytes();
        EXPECT_EQ(resources.loadSprite("spr.txt", "it"), -1);
        EXPECT_LT(test::allocatedBytes() - before, 100'000) << text;
    }
}

} // namespace
