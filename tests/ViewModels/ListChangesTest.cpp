#include "ViewModels/ListChanges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace wrapio {

namespace {

using Kind = ListChange::Kind;

QUuid idOf(char letter) {
    return {static_cast<uint>(letter), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
}

std::vector<QUuid> list(const std::string& letters) {
    std::vector<QUuid> ids;
    for (const char letter : letters)
        ids.push_back(idOf(letter));
    return ids;
}

/// What the steps make of `before`, taking inserted entries from `after`.
std::vector<QUuid> applied(std::vector<QUuid> before, const std::vector<QUuid>& after,
                           const std::vector<ListChange>& changes) {
    for (const ListChange& change : changes) {
        const auto first = before.begin() + change.first;
        switch (change.kind) {
        case Kind::remove:
            before.erase(first, before.begin() + change.last + 1);
            break;
        case Kind::move: {
            const QUuid moved = *first;
            before.erase(first);
            before.insert(before.begin() + change.to, moved);
            break;
        }
        case Kind::insert:
            before.insert(first, after.begin() + change.first, after.begin() + change.last + 1);
            break;
        }
    }
    return before;
}

std::size_t count(const std::vector<ListChange>& changes, Kind kind) {
    return static_cast<std::size_t>(std::count_if(changes.begin(), changes.end(),
                                                  [kind](const ListChange& change) { return change.kind == kind; }));
}

}  // namespace

TEST(ListChanges, has_no_steps_between_equal_lists) {
    EXPECT_TRUE(listChanges(list("abc"), list("abc")).empty());
    EXPECT_TRUE(listChanges({}, {}).empty());
}

TEST(ListChanges, takes_neighbours_out_and_in_as_one_step) {
    EXPECT_EQ(listChanges(list("abcde"), list("ae")), (std::vector<ListChange>{{Kind::remove, 1, 3, 0}}));
    EXPECT_EQ(listChanges(list("ae"), list("abcde")), (std::vector<ListChange>{{Kind::insert, 1, 3, 0}}));
}

TEST(ListChanges, moves_only_the_one_entry_that_moved) {
    EXPECT_EQ(listChanges(list("abcde"), list("bcdea")), (std::vector<ListChange>{{Kind::move, 0, 0, 4}}));
    EXPECT_EQ(listChanges(list("abcde"), list("eabcd")), (std::vector<ListChange>{{Kind::move, 4, 4, 0}}));
    EXPECT_EQ(listChanges(list("abcde"), list("acbde")).size(), 1U);
}

TEST(ListChanges, moves_as_few_entries_as_possible_when_a_list_is_turned_round) {
    const auto changes = listChanges(list("abcdef"), list("fedcba"));
    EXPECT_EQ(changes.size(), 5U);
    EXPECT_EQ(applied(list("abcdef"), list("fedcba"), changes), list("fedcba"));
}

TEST(ListChanges, leads_to_the_new_list_when_an_id_occurs_twice) {
    for (const auto& [before, after] : {std::pair{"aab", "ba"}, {"ba", "aab"}, {"aba", "baa"}, {"aaa", "a"}})
        EXPECT_EQ(applied(list(before), list(after), listChanges(list(before), list(after))), list(after))
            << before << " to " << after;
}

TEST(ListChanges, leads_from_any_list_to_any_other) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string all = "abcdefghijklmnop";
        std::shuffle(all.begin(), all.end(), random);
        const auto before = list(all.substr(0, random() % all.size()));
        std::shuffle(all.begin(), all.end(), random);
        const auto after = list(all.substr(0, random() % all.size()));
        const auto changes = listChanges(before, after);
        ASSERT_EQ(applied(before, after, changes), after) << "round " << round;
        ASSERT_LE(count(changes, Kind::move), after.empty() ? 0 : after.size() - 1);
    }
}

}  // namespace wrapio
