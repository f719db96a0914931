#include "selvane/platform/windows/utf8.h"

#include <gtest/gtest.h>

namespace sv::platform {

TEST(Utf8, holds_characters_of_any_size) {
    EXPECT_EQ(toUtf8(L""), "");
    EXPECT_EQ(toUtf8(L"a\u00fc\u0434\u20ac\U0001F600"),
              "a\xc3\xbc\xd0\xb4\xe2\x82\xac\xf0\x9f\x98\x80");
    EXPECT_EQ(toUtf8({L"\xd83d", 1}), "\xef\xbf\xbd") << "half a surrogate pair";
}

} // namespace sv::platform
