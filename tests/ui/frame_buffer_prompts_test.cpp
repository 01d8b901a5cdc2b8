#include "ui/frame_buffer_prompts.h"

#include "plugin/scene_file_state.h"
#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* switchBack =
    "VRay currenty always creates a 32-Bits/Channel 3ds Max Framebuffer.\n Do you want to switch "
    "back to a 16-bit Framebuffer?";
constexpr const char* switchOn =
    "VRay will only create a 16-Bits/Channel 3ds Max Framebuffer.\n Do you want to enable the "
    "32-bit (HDR) Framebuffer?";

// Yes and No, with the question icon.
Box Question(const std::string& text) {
    return {0x24, 0, "veltrane", text};
}

std::string QuestionFor(int bitDepth, bool memory, bool force, const std::string& output) {
    const ui::FrameBufferQuestion* question =
        ui::FrameBufferQuestionFor({bitDepth, memory, force, host::FromUtf8(output)});
    return question ? host::ToUtf8(question->text) : "";
}

TEST(FrameBufferQuestions, Below32BitsAskWhenVRayIsForcedTo32) {
    for (const int bitDepth : {8, 16}) {
        for (const bool memory : {false, true}) {
            EXPECT_EQ(QuestionFor(bitDepth, memory, true, "a.exr"), switchBack) << bitDepth;
            EXPECT_EQ(QuestionFor(bitDepth, memory, false, "a.png"), "") << bitDepth;
        }
    }
}

TEST(FrameBufferQuestions, At32BitsAskWhenNothingGivesThem) {
    EXPECT_EQ(QuestionFor(32, false, false, "a.png"), switchOn);
    EXPECT_EQ(QuestionFor(32, false, false, ""), switchOn);
    EXPECT_EQ(QuestionFor(32, true, false, "a.png"), "");
    EXPECT_EQ(QuestionFor(32, false, true, "a.png"), "");
    EXPECT_EQ(QuestionFor(32, false, false, "a.exr"), "");
}

TEST(FrameBufferQuestions, FourFormatsHaveWhatIsAboveWhite) {
    for (const char* name : {"/r/a.exr", "/r/a.FXR", "/r/a.Hdr", "/r/a.b.pic"})
        EXPECT_EQ(QuestionFor(32, false, false, name), "") << name;
    for (const char* name : {"/r/a.tif", "/r/exr", "/r/a.exr2", "/r/a.exr.png", "/r.exr/a", "a.ex"})
        EXPECT_EQ(QuestionFor(32, false, false, name), switchOn) << name;
}

class FrameBufferPrompts : public EffectTest {
  protected:
    IParamBlock2& UseVRay() {
        IParamBlock2& block = *UseRenderer(VRAY_CLASS_ID).GetParamBlock(15);
        Render().output.SetName(_M("/renders/a.png"));
        return block;
    }
    void Offer() { ui::OfferFrameBufferChange(*effect, nullptr); }
};

TEST_F(FrameBufferPrompts, YesSwitchesVRayBack) {
    IParamBlock2& vray = UseVRay();
    vray.SetValue(280, 0, TRUE);
    answer = IDYES;
    Offer();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Question(switchBack)));
    EXPECT_EQ(vray.GetInt(280), FALSE);
    Offer();
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(FrameBufferPrompts, NoLeavesVRayAsItIs) {
    IParamBlock2& vray = UseVRay();
    vray.SetValue(280, 0, TRUE);
    Set("bitDepth"_param, 8);
    answer = IDNO;
    Offer();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Question(switchBack)));
    EXPECT_EQ(vray.GetInt(280), TRUE);
}

TEST_F(FrameBufferPrompts, YesSwitchesVRayTo32Bits) {
    IParamBlock2& vray = UseVRay();
    Set("bitDepth"_param, 32);
    answer = IDYES;
    Offer();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Question(switchOn)));
    EXPECT_EQ(vray.GetInt(280), TRUE);
}

TEST_F(FrameBufferPrompts, TheMemoryFrameBufferIsEnough) {
    UseVRay().SetValue(170, 0, TRUE);
    Set("bitDepth"_param, 32);
    Offer();
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(FrameBufferPrompts, AnOutputThatKeepsWhatIsAboveWhiteIsEnough) {
    UseVRay();
    Render().output.SetName(_M("/renders/a.EXR"));
    Set("bitDepth"_param, 32);
    Offer();
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(FrameBufferPrompts, AScriptThatFailsIsIgnored) {
    UseVRay();
    Host().renderer.reset(new host::HostRenderer(VRAY_CLASS_ID));
    static_cast<host::HostRenderer*>(Host().renderer.get())
        ->properties.Remove(host::VRAY_FORCE_32_BITS_PROPERTY);
    Set("bitDepth"_param, 32);
    answer = IDYES;
    Offer();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Question(switchOn)));
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(FrameBufferPrompts, OtherRenderersAreLeftAlone) {
    Set("bitDepth"_param, 32);
    Render().output.SetName(_M("/renders/a.png"));
    Offer();
    UseRenderer(CORONA_CLASS_ID);
    Offer();
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(FrameBufferPrompts, AVRayWithoutSettingsIsLeftAlone) {
    UseVRay();
    Host().renderer->DeleteReference(0);
    Set("bitDepth"_param, 32);
    Offer();
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(FrameBufferPrompts, NobodyIsAskedWhoIsNotThere) {
    UseVRay();
    Set("bitDepth"_param, 32);
    Host().settings.quiet = true;
    Offer();
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

TEST_F(FrameBufferPrompts, NobodyIsAskedWhileASceneFileIsInHand) {
    UseVRay();
    Set("bitDepth"_param, 32);
    plugin::ListenToSceneFiles(nullptr);
    for (const auto& [before, after] :
         {std::pair{NOTIFY_FILE_PRE_OPEN_PROCESS, NOTIFY_FILE_POST_OPEN_PROCESS},
          {NOTIFY_FILE_PRE_SAVE_PROCESS, NOTIFY_FILE_POST_SAVE_PROCESS}}) {
        host::Broadcast(before);
        Offer();
        EXPECT_THAT(TakeBoxes(), IsEmpty()) << before;
        host::Broadcast(after);
        Offer();
        EXPECT_THAT(TakeBoxes(), ElementsAre(Question(switchOn))) << after;
    }
    plugin::StopListeningToSceneFiles(nullptr);
}

TEST_F(FrameBufferPrompts, AnEffectWithoutItsBlockAsksNothing) {
    UseVRay().SetValue(280, 0, TRUE);
    effect->DeleteReference(0);
    Offer();
    EXPECT_THAT(TakeBoxes(), IsEmpty());
}

}  // namespace
