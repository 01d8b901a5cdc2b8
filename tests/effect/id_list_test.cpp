#include "effect/id_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "host/text.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

struct List {
    bool understood = false;
    std::vector<std::pair<int, std::string>> entries;
};

List Parse(const MSTR& text) {
    Tab<int> ids;
    NameTab names;
    List list;
    list.understood = effect::ParseIDList(text.data(), ids, names);
    EXPECT_EQ(ids.Count(), names.Count());
    for (int i = 0; i < ids.Count(); ++i)
        list.entries.emplace_back(ids[i], host::ToUtf8(MSTR(names[i])));
    return list;
}

TEST(IDList, OfTheDefaultGivesItsIDsWithTheirNames) {
    const List list = Parse(_M("1, 3 [Name], 5-8"));
    EXPECT_TRUE(list.understood);
    EXPECT_THAT(list.entries, ElementsAre(Pair(1, ""), Pair(3, "Name"), Pair(5, ""), Pair(6, ""),
                                          Pair(7, ""), Pair(8, "")));
}

TEST(IDList, ARangeWithANameNumbersItsNames) {
    const List list = Parse(_M("2-4 [Wall]"));
    EXPECT_TRUE(list.understood);
    EXPECT_THAT(list.entries,
                ElementsAre(Pair(2, "Wall ID:2"), Pair(3, "Wall ID:3"), Pair(4, "Wall ID:4")));
}

TEST(IDList, ARangeOfOneIDIsARange) {
    EXPECT_THAT(Parse(_M("7-7 [Wall]")).entries, ElementsAre(Pair(7, "Wall ID:7")));
}

TEST(IDList, IsAppendedToWhatIsThere) {
    Tab<int> ids;
    NameTab names;
    EXPECT_TRUE(effect::ParseIDList(_M("9 [A]"), ids, names));
    EXPECT_TRUE(effect::ParseIDList(_M("1"), ids, names));
    ASSERT_EQ(ids.Count(), 2);
    EXPECT_EQ(ids[0], 9);
    EXPECT_EQ(ids[1], 1);
    EXPECT_EQ(names.Count(), 2);
}

TEST(IDList, TheOrderAndTheRepetitionsAreTheUsers) {
    EXPECT_THAT(Parse(_M("5,1,5")).entries, ElementsAre(Pair(5, ""), Pair(1, ""), Pair(5, "")));
}

TEST(IDList, ARangeBackwardsStopsWithWhatCameBefore) {
    EXPECT_FALSE(Parse(_M("8-5")).understood);
    EXPECT_THAT(Parse(_M("8-5")).entries, IsEmpty());
    const List list = Parse(_M("1, 8-5, 2"));
    EXPECT_FALSE(list.understood);
    EXPECT_THAT(list.entries, ElementsAre(Pair(1, "")));
}

TEST(IDList, ALaterNumberReplacesTheEndOfTheRange) {
    const List list = Parse(_M("1 2 3"));
    EXPECT_TRUE(list.understood);
    EXPECT_THAT(list.entries, ElementsAre(Pair(1, ""), Pair(2, ""), Pair(3, "")));
    EXPECT_THAT(Parse(_M("1-9-2")).entries, ElementsAre(Pair(1, ""), Pair(2, "")));
}

TEST(IDList, DashesBehindANumberAreSkipped) {
    for (const MCHAR* text : {_M("1 2"), _M("1--2"), _M("1 - - 2"), _M("1-2-")}) {
        EXPECT_TRUE(Parse(text).understood) << host::ToUtf8(MSTR(text));
        EXPECT_THAT(Parse(text).entries, ElementsAre(Pair(1, ""), Pair(2, "")));
    }
    EXPECT_THAT(Parse(_M("1-, 4")).entries, ElementsAre(Pair(1, ""), Pair(4, "")));
    EXPECT_TRUE(Parse(_M("1 [A]-")).understood);
}

TEST(IDList, BlanksAreSkippedOutsideOfNames) {
    const List list = Parse(_M("  1 \t,2   [ a b ] , 03 "));
    EXPECT_TRUE(list.understood);
    EXPECT_THAT(list.entries, ElementsAre(Pair(1, ""), Pair(2, " a b "), Pair(3, "")));
}

TEST(IDList, ATextThatIsNoListGivesNone) {
    for (const MCHAR* text :
         {_M("abc"), _M(""), _M("   "), _M(","), _M("-1"), _M("[A]"), _M("]")}) {
        EXPECT_FALSE(Parse(text).understood) << host::ToUtf8(MSTR(text));
        EXPECT_THAT(Parse(text).entries, IsEmpty());
    }
    EXPECT_FALSE(Parse(MSTR()).understood);
    Tab<int> ids;
    NameTab names;
    EXPECT_FALSE(effect::ParseIDList(nullptr, ids, names));
}

TEST(IDList, AFaultKeepsWhatStandsBeforeIt) {
    for (const MCHAR* text :
         {_M("1, 2, "), _M("1, 2,"), _M("1, 2,,3"), _M("1, 2, -3"), _M("1, 2, [A] 3"),
          _M("1, 2, 3 x"), _M("1, 2, 3;4"), _M("1, 2, 3]"), _M("1, 2, 3 [A"), _M("1, 2, 3 [A[B]"),
          _M("1, 2, 3 [A] 4"), _M("1, 2, 3 [A][B]"), _M("1, 2, 3 [A]-4"), _M("1, 2, 3\n")}) {
        const List list = Parse(text);
        EXPECT_FALSE(list.understood) << host::ToUtf8(MSTR(text));
        EXPECT_THAT(list.entries, ElementsAre(Pair(1, ""), Pair(2, "")))
            << host::ToUtf8(MSTR(text));
    }
}

TEST(IDList, ANameMayBeEmptyAndMayHoldAnythingButBrackets) {
    EXPECT_THAT(Parse(_M("1 [], 2 [a,b-3/c]")).entries,
                ElementsAre(Pair(1, ""), Pair(2, "a,b-3/c")));
    EXPECT_THAT(Parse(_M("1-2 []")).entries, ElementsAre(Pair(1, ""), Pair(2, "")));
    EXPECT_FALSE(Parse(_M("1 [][A]")).understood) << "an empty name is a name";
}

TEST(IDList, ANumberTooLargeIsAFault) {
    EXPECT_THAT(Parse(_M("2147483647")).entries, ElementsAre(Pair(2147483647, "")));
    EXPECT_THAT(Parse(_M("2147483646-2147483647")).entries, SizeIs(2));
    for (const MCHAR* text : {_M("1, 2147483648"), _M("1, 99999999999999999999"),
                              _M("1, 2-2147483648"), _M("1, 2-4294967299")}) {
        EXPECT_FALSE(Parse(text).understood);
        EXPECT_THAT(Parse(text).entries, ElementsAre(Pair(1, "")));
    }
}

TEST(IDList, ARangeEndsWhereNoIDMatchesAnyMore) {
    const List list = Parse(_M("0-2000000000, 5"));
    EXPECT_TRUE(list.understood);
    ASSERT_THAT(list.entries, SizeIs(65537));
    EXPECT_EQ(list.entries[65535].first, 65535);
    EXPECT_EQ(list.entries[65536].first, 5);
}

TEST(IDList, NoListGrowsWithoutEnd) {
    MSTR text(_M("0-65535"));
    for (int i = 0; i < 16; ++i)
        text += _M(",0-65535");
    const List list = Parse(text);
    EXPECT_FALSE(list.understood);
    EXPECT_THAT(list.entries, SizeIs(1 << 20));
}

}  // namespace
