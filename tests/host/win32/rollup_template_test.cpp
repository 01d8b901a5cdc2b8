#include "host/win32/rollup_template.h"

#include <gtest/gtest.h>

#include "tests/host/win32/sample_rollups_ids.h"

namespace {

std::vector<DWORD> TemplateOf(int number) {
    return host::RollupTemplate(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(number));
}

// Where the two forms have their style, and behind it or before it the extended one.
constexpr std::size_t newerStyle = 3;
constexpr std::size_t newerExtended = 2;
constexpr std::size_t olderStyle = 0;
constexpr std::size_t olderExtended = 1;

TEST(RollupTemplate, TheNewerFormBecomesAHiddenChild) {
    const std::vector<DWORD> form = TemplateOf(SAMPLE_ROLLUP_MAIN);
    ASSERT_GT(form.size(), newerStyle);
    EXPECT_EQ(form[0], 0xffff0001);
    EXPECT_EQ(form[newerStyle], static_cast<DWORD>(DS_SETFONT | WS_CHILD | DS_CONTROL));
    EXPECT_EQ(form[newerExtended], static_cast<DWORD>(WS_EX_CONTROLPARENT));
}

TEST(RollupTemplate, TheOlderFormLosesItsFrame) {
    const std::vector<DWORD> form = TemplateOf(SAMPLE_ROLLUP_FRAMED);
    ASSERT_GT(form.size(), olderExtended);
    EXPECT_EQ(form[olderStyle], static_cast<DWORD>(DS_SETFONT | WS_CHILD | DS_CONTROL));
    EXPECT_EQ(form[olderExtended], static_cast<DWORD>(WS_EX_CONTROLPARENT));
}

TEST(RollupTemplate, AResourceThatIsNotThereIsEmpty) {
    EXPECT_TRUE(TemplateOf(999).empty());
    // A library of the system's without such a dialog.
    EXPECT_TRUE(host::RollupTemplate(GetModuleHandleW(L"kernel32.dll"),
                                     MAKEINTRESOURCEW(SAMPLE_ROLLUP_MAIN))
                    .empty());
}

}  // namespace
