#include "effect/confirm_overwrite.h"

#include "plugin/library_services.h"
#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the library was given to ask with, and what it answers.
std::vector<std::string> overwriteTexts;
effect::OverwriteAnswer overwriteAnswer;

effect::OverwriteAnswer RecordOverwrite(const MSTR& text) {
    overwriteTexts.push_back(host::ToUtf8(text));
    return overwriteAnswer;
}

class ConfirmOverwrite : public EffectTest {
  protected:
    ConfirmOverwrite() {
        overwriteTexts.clear();
        services.askOverwrite = RecordOverwrite;
    }
    bool Ask(const MSTR& name = MSTR(_M("/renders/a b.psd"))) {
        return effect::ConfirmOverwrite(services, name, ask);
    }
    static std::vector<std::string> TakeTexts() { return std::exchange(overwriteTexts, {}); }

    effect::LibraryServices services = plugin::Services();
    bool ask = true;
};

constexpr const char* overwriteQuestion = "Confirm overwriting:\n\n/renders/a b.psd ?";

TEST_F(ConfirmOverwrite, YesGoesOnAndAsksAgain) {
    overwriteAnswer = {.overwrite = true};
    EXPECT_TRUE(Ask());
    EXPECT_TRUE(ask);
    EXPECT_TRUE(Ask());
    EXPECT_THAT(TakeTexts(), ElementsAre(overwriteQuestion, overwriteQuestion));
}

TEST_F(ConfirmOverwrite, YesWithTheTickGoesOnAndAsksNoMore) {
    overwriteAnswer = {.overwrite = true, .askNoMore = true};
    EXPECT_TRUE(Ask());
    EXPECT_FALSE(ask);
    EXPECT_THAT(TakeTexts(), ElementsAre(overwriteQuestion));
    overwriteAnswer = {};
    EXPECT_TRUE(Ask()) << "without a question";
    EXPECT_FALSE(ask);
    EXPECT_THAT(TakeTexts(), IsEmpty());
}

TEST_F(ConfirmOverwrite, NoStopsAndTheTickIsIgnored) {
    for (const bool ticked : {false, true}) {
        overwriteAnswer = {.overwrite = false, .askNoMore = ticked};
        EXPECT_FALSE(Ask());
        EXPECT_TRUE(ask);
    }
    EXPECT_THAT(TakeTexts(), ElementsAre(overwriteQuestion, overwriteQuestion));
}

TEST_F(ConfirmOverwrite, ANameIsNotTakenForAForm) {
    Ask(MSTR(_M("/renders/100%s%d.psd")));
    EXPECT_THAT(TakeTexts(), ElementsAre("Confirm overwriting:\n\n/renders/100%s%d.psd ?"));
}

}  // namespace
