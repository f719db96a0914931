#include "selvane/core/ObjectList.h"

#include "selvane/world/Object.h"
#include "support/EngineTest.h"

#include <string>

namespace sv {
namespace {

class Lists : public test::EngineTest {
  protected:
    ObjectList listOf(const std::string &letters) {
        ObjectList list;
        for (const char letter : letters)
            EXPECT_EQ(list.insert(&objects[letter - 'a']), 0);
        return list;
    }

    std::string lettersOf(const ObjectList &list) const {
        std::string letters;
        for (const Object *object : list)
            letters += static_cast<char>('a' + (object - objects));
        return letters;
    }

    Object objects[4];
};

TEST_F(Lists, keep_the_order_and_take_an_object_twice) {
    ObjectList list = listOf("abcab");
    const ObjectList copy = list;
    EXPECT_EQ(list.remove(&objects[0]), 0);
    EXPECT_EQ(lettersOf(list), "bcab") << "only the first goes";
    EXPECT_EQ(lettersOf(copy), "abcab") << "a copy is a list of its own";
    EXPECT_EQ(list.remove(&objects[3]), -1);
    EXPECT_EQ(list.insert(nullptr), -1);
    EXPECT_EQ(lettersOf(list + listOf("da")), "bcabda");
}

TEST_F(Lists, may_change_while_an_iterator_walks) {
    ObjectList list = listOf("abcd");
    ObjectListIterator it(&list);
    it.next();
    EXPECT_EQ(it.currentObject(), &objects[1]);
    list.remove(&objects[0]);
    EXPECT_EQ(it.currentObject(), &objects[2]) << "the object behind moved up";
    list.clear();
    EXPECT_TRUE(it.isDone());
    EXPECT_EQ(it.currentObject(), nullptr);
    it.next();
    list = listOf("ab");
    EXPECT_EQ(it.currentObject(), &objects[1]) << "an iterator that is done does not move on";
    for (it.first(); !it.isDone(); it.next())
        if (list.getCount() < 4)
            list.insert(it.currentObject());
    EXPECT_EQ(lettersOf(list), "abab");
    EXPECT_EQ(list.at(-1), nullptr);
    EXPECT_EQ(list.at(4), nullptr);
}

} // namespace
} // namespace sv
