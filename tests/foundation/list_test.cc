// Owning lists: the order of the records, and that each is freed once.
#include "foundation/list.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct letter {
    char name = 0;
    std::string* freed = nullptr;
    letter *previous = nullptr, *next = nullptr;
    ~letter() { *freed += name; }
};

class list : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char name : {'a', 'b', 'c', 'd'})
            tm_list_append(std::make_unique<letter>(letter{name, &ignored}), first, last).freed = &freed;
    }
    void TearDown() override { tm_list_clear(first, last); }

    // Forwards, then backwards.
    std::string order() const {
        std::string names;
        for (const letter* l = first; l != nullptr; l = l->next) names += l->name;
        names += '|';
        for (const letter* l = last; l != nullptr; l = l->previous) names += l->name;
        return names;
    }

    std::string freed, ignored;
    letter *first = nullptr, *last = nullptr;
};

TEST_F(list, gives_up_a_record_of_any_place) {
    tm_list_take(first->next, first, last);
    EXPECT_EQ(order() + freed, "acd|dcab");
    tm_list_take(last, first, last);
    EXPECT_EQ(order() + freed, "ac|cabd");
    const auto held = tm_list_take(first, first, last);
    EXPECT_EQ(order() + freed, "c|cbd");
    tm_list_take_next(first->next == nullptr ? first : last);
    last = nullptr;
    EXPECT_EQ(order() + freed, "|bdc");
}

TEST_F(list, known_by_its_last_record_ends_where_it_began) {
    letter* newest = last;
    tm_list_take_next(first->next);  // a, then c
    EXPECT_EQ(order() + freed, "acd|dcab");
    tm_list_take(first->next, newest);
    tm_list_append(std::make_unique<letter>(letter{'e', &freed}), newest);
    freed.clear();
    tm_list_clear(newest);
    EXPECT_EQ(freed, "eda");
    first = last = nullptr;
}

}  // namespace
