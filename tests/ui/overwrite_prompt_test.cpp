#include "ui/overwrite_prompt.h"

#include <gtest/gtest.h>

#include "host/text.h"

namespace {

using ui::OverwriteWidths;

constexpr OverwriteWidths designed{396, 300, 120, 204};

TEST(OverwritePrompt, ATextThatFitsLeavesTheDialogAsItIs) {
    for (const int width : {0, 120, 300})
        EXPECT_EQ(ui::GrownToFit(designed, width), designed) << width;
}

TEST(OverwritePrompt, GrowsByWhatIsMissingWithTheButtonsInTheMiddle) {
    EXPECT_EQ(ui::GrownToFit(designed, 500), (OverwriteWidths{596, 500, 220, 304}));
    EXPECT_EQ(ui::GrownToFit(designed, 301), (OverwriteWidths{397, 301, 120, 204}));
    EXPECT_EQ(ui::GrownToFit(designed, 302), (OverwriteWidths{398, 302, 121, 205}));
}

TEST(OverwritePrompt, TheLineOfThePathCounts) {
    EXPECT_EQ(host::ToUtf8(ui::PathLine(_M("Confirm overwriting:\n\n/r/a.psd ?"))), "/r/a.psd ?");
    EXPECT_EQ(host::ToUtf8(ui::PathLine(_M("/r/a.psd ?"))), "/r/a.psd ?");
    EXPECT_EQ(host::ToUtf8(ui::PathLine(_M(""))), "");
}

TEST(OverwritePrompt, TheLineOfThePathIsReplacedAlone) {
    EXPECT_EQ(host::ToUtf8(ui::WithPathLine(_M("Confirm overwriting:\n\n/r/a.psd ?"), _M("..."))),
              "Confirm overwriting:\n\n...");
    EXPECT_EQ(host::ToUtf8(ui::WithPathLine(_M("/r/a.psd ?"), _M("/r"))), "/r");
}

TEST(OverwritePrompt, TheTickCountsWithYesAlone) {
    for (const bool ticked : {false, true}) {
        const effect::OverwriteAnswer yes = ui::AnswerOf(6, ticked);
        EXPECT_TRUE(yes.overwrite);
        EXPECT_EQ(yes.askNoMore, ticked);
        for (const int other : {7, 2, 0}) {
            const effect::OverwriteAnswer no = ui::AnswerOf(other, ticked);
            EXPECT_FALSE(no.overwrite) << other;
            EXPECT_FALSE(no.askNoMore) << other;
        }
    }
}

}  // namespace
