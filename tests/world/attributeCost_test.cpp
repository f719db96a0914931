// What a text of attributes can make the engine do.

#include "selvane/core/LogManager.h"
#include "selvane/network/message.h"
#include "selvane/world/ViewObject.h"
#include "support/WorldTest.h"
#include "support/allocations.h"

namespace {

class AttributeCost : public test::WorldTest {};

TEST_F(AttributeCost, the_longest_message_is_taken_apart_once) {
    sv::LogManager::getInstance().setLogLevel(0);
    const std::string item = "a_key_that_nobody_looks_for:1,";
    std::string text;
    long items = 0;
    for (; text.size() + item.size() <= sv::MAX_MESSAGE_BYTES; ++items)
        text += item;
    auto *p_o = new sv::ViewObject;
    const long before = test::allocations();
    p_o->deserialize(text);
    EXPECT_LT(test::allocations() - before, 2 * items);
}

} // namespace
