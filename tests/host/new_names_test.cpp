#include "host/new_names.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "host/text.h"

namespace {

class NewNamesTest : public testing::Test {
  protected:
    std::string For(const char* name) {
        return host::ToUtf8(names.For(host::FromUtf8(name)).data());
    }
    std::set<std::string> taken;
    host::NewNames names{
        [this](const MSTR& name) { return taken.count(host::ToUtf8(name.data())) != 0; }};
};

TEST_F(NewNamesTest, ANameThatIsFreeStays) {
    EXPECT_EQ(For("Box"), "Box");
    EXPECT_EQ(For("Box"), "Box");
    names.Avoid(_M("Box"));
    EXPECT_EQ(For("Box"), "Box") << "the names of what comes may repeat among themselves";
}

TEST_F(NewNamesTest, ANameThatIsTakenGetsTheNextFreeNumber) {
    taken = {"Box", "Box002"};
    names.Avoid(_M("Box004"));
    EXPECT_EQ(For("Box"), "Box001");
    EXPECT_EQ(For("Box"), "Box003");
    EXPECT_EQ(For("Box"), "Box005");
}

TEST_F(NewNamesTest, ANumberAtTheEndIsReplaced) {
    taken = {"Box007", "Box1"};
    EXPECT_EQ(For("Box007"), "Box001");
    EXPECT_EQ(For("Box1"), "Box002");
}

TEST_F(NewNamesTest, ANameOfDigitsOrOfNothingGetsThreeDigitsMore) {
    taken = {"0", ""};
    EXPECT_EQ(For("0"), "0001");
    EXPECT_EQ(For(""), "001");
}

TEST_F(NewNamesTest, NumbersGrowBeyondThreeDigits) {
    taken = {"n"};
    for (int number = 1; number <= 999; ++number)
        For("n");
    EXPECT_EQ(For("n"), "n1000");
}

}  // namespace
