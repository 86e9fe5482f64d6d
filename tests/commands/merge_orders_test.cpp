#include "commands/order_merge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace tarn::test {

namespace {

IdList ids(const std::string& letters)
{
    IdList list;
    for (const char letter : letters)
        list.append(ObjectRef{quint32(letter)});
    return list;
}

struct Outcome {
    std::string order;
    bool has_conflict;
    bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out)
{
    *out << outcome.order << (outcome.has_conflict ? " with a conflict" : "");
}

/// Elements are letters; `members` those that are there afterwards.
Outcome merged(const std::string& base, const std::string& ours, const std::string& theirs, std::string members,
               MergeSide preferred = MergeSide::Ours)
{
    std::sort(members.begin(), members.end());
    const OrderVersions versions{ids(base), ids(ours), ids(theirs), {members.begin(), members.end()}};
    const auto result = merge_order(versions, preferred, std::less<std::vector<quint32>>());
    Outcome outcome{{}, result.has_conflict};
    for (const ObjectRef id : result.ids)
        outcome.order += char(id.id);
    return outcome;
}

} // namespace

TEST(MergedOrders, what_one_side_did_is_done_and_it_does_not_matter_which)
{
    struct Case {
        const char* base;
        const char* one;
        const char* other;
        const char* members;
        const char* order;
    };
    for (const Case& c : {Case{"abcd", "abcd", "dabc", "abcd", "dabc"},          // moved
                          Case{"abcd", "abXcd", "abcdY", "abcdXY", "abXcdY"},    // added in two places
                          Case{"abcd", "aXbcd", "aYbcd", "abcdXY", "aXYbcd"},    // and in one
                          Case{"abcd", "aXZbcd", "aYbcd", "abcdXYZ", "aXZYbcd"}, // runs stay together
                          Case{"abcd", "bacd", "abdc", "abcd", "badc"},          // moved here and there
                          Case{"abcd", "acd", "aXbcd", "acdX", "aXcd"},          // in front of what went
                          Case{"abcd", "abXcd", "acdb", "abcdX", "aXcdb"},       // behind what moved away
                          Case{"abcd", "dcba", "dcba", "abcd", "dcba"},          // both the same
                          Case{"", "X", "Y", "XY", "XY"}, Case{"ab", "", "ab", "", ""}}) {
        EXPECT_EQ(merged(c.base, c.one, c.other, c.members), (Outcome{c.order, false})) << c.one << ' ' << c.other;
        EXPECT_EQ(merged(c.base, c.other, c.one, c.members), (Outcome{c.order, false})) << c.other << ' ' << c.one;
    }
}

TEST(MergedOrders, what_both_moved_elsewhere_goes_where_the_preferred_side_has_it)
{
    EXPECT_EQ(merged("abcd", "dabc", "adbc", "abcd"), (Outcome{"dabc", true}));
    EXPECT_EQ(merged("abcd", "dabc", "adbc", "abcd", MergeSide::Theirs), (Outcome{"adbc", true}));
    EXPECT_EQ(merged("ab", "abXY", "abYX", "abXY", MergeSide::Theirs), (Outcome{"abYX", true}));
}

} // namespace tarn::test
