#include "selvane/core/attributes.h"

#include <gtest/gtest.h>

namespace sv {
namespace {

TEST(Attributes, are_selected_all_or_by_change_or_by_name) {
    const struct {
        const char *selector, *name;
        bool if_unchanged, if_modified;
    } cases[] = {
        {"ALL", "PATH,", true, true},
        {"ALL,", "PATH,", false, false},
        {"", "PATH,", false, true},
        {"PATH", "PATH,", false, false},
        {"SPEED,PATH,", "PATH,", true, true},
        {"FOLLOW_PATH,", "PATH,", true, true},
        {"PATH,", "FOLLOW_PATH,", false, false},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(isAttributeWanted(c.selector, c.name, false), c.if_unchanged) << c.selector;
        EXPECT_EQ(isAttributeWanted(c.selector, c.name, true), c.if_modified) << c.selector;
    }
}

TEST(Attributes, a_text_comes_back_as_it_was_written) {
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

} // namespace
} // namespace sv
