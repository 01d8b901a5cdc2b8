#include "effect/numbered_name.h"

#include "tests/effect/effect_fixture.h"
#include "tests/host/native_path.h"

namespace {

class NumberedName : public EffectTest {
  protected:
    static constexpr int noNumber = -2000000;

    static MSTR Name(const std::string& text) { return host::FromUtf8(text); }
    static std::string Numbered(const std::string& text, int frame) {
        MSTR name = Name(text);
        EXPECT_TRUE(effect::AddFrameNumber(name, frame * GetTicksPerFrame()));
        return host::ToUtf8(name);
    }
};

TEST_F(NumberedName, OfAStillHasNoNumber) {
    Render().fileNumberBase = 100;
    EXPECT_EQ(Numbered("/shadows/pass.exr", 12), "/shadows/pass.exr");
}

TEST_F(NumberedName, OfASpanCountsFromTheHostsBaseAndOfPickedFramesFrom0) {
    Render().fileNumberBase = 100;
    const std::pair<int, const char*> cases[] = {{REND_TIMESEGMENT, "/shadows/pass0112.exr"},
                                                 {REND_TIMERANGE, "/shadows/pass0112.exr"},
                                                 {REND_TIMEPICKUP, "/shadows/pass0012.exr"}};
    for (const auto& [timeType, expected] : cases) {
        Render().timeType = timeType;
        EXPECT_EQ(Numbered("/shadows/pass.exr", 12), expected);
    }
}

TEST_F(NumberedName, OfTheNumberThatMeansNoneHasNone) {
    Render().timeType = REND_TIMERANGE;
    Render().fileNumberBase = noNumber;
    EXPECT_EQ(Numbered("/shadows/pass.exr", 0), "/shadows/pass.exr");
    EXPECT_EQ(Numbered("/shadows/pass.exr", -1), "/shadows/pass-2000001.exr");
}

TEST_F(NumberedName, WithoutRoomForItsNumberStaysAsItWas) {
    Render().timeType = REND_TIMERANGE;
    const std::string longest = std::string("/").append(250, 'n') + ".exr";
    EXPECT_EQ(Numbered(longest, 1), std::string("/").append(250, 'n') + "0001.exr");
    MSTR tooLong = Name("/n" + longest.substr(1));
    EXPECT_FALSE(effect::AddFrameNumber(tooLong, 0));
    EXPECT_EQ(host::ToUtf8(tooLong), "/n" + longest.substr(1));
}

TEST_F(NumberedName, IsMadeAbsoluteByNameAlone) {
    MSTR relative = Name("passes/../shadow.exr");
    EXPECT_TRUE(effect::MakeAbsolute(relative));
    EXPECT_EQ(host::ToUtf8(relative), (std::filesystem::current_path() / "shadow.exr").string());
    MSTR absolute = Name("/shadows/./pass.exr");
    EXPECT_TRUE(effect::MakeAbsolute(absolute));
    EXPECT_EQ(host::ToUtf8(absolute), NativePath("/shadows/pass.exr"));
}

TEST_F(NumberedName, ThatIsNoneStaysAsItWas) {
    const std::string leaf = "passes/" + std::string(256, 'x');
    MSTR name = Name(leaf);
    EXPECT_FALSE(effect::MakeAbsolute(name));
    EXPECT_EQ(host::ToUtf8(name), leaf);
}

}  // namespace
