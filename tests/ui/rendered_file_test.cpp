#include "ui/rendered_file.h"

#include "tests/effect/effect_fixture.h"
#include "tests/host/native_path.h"

namespace {

class RenderedFile : public EffectTest {
  protected:
    std::string Name() {
        const std::optional<MSTR> name = ui::RenderedFile(*effect);
        return name ? host::ToUtf8(*name) : "none";
    }
};

TEST_F(RenderedFile, IsThatOfTheRender) {
    Render().output.SetName(_M("/renders/shot.exr"));
    EXPECT_EQ(Name(), NativePath("/renders/shot.psd"));
    SetFilename("/renders/mine.psb");
    EXPECT_EQ(Name(), NativePath("/renders/mine.psb"));
}

TEST_F(RenderedFile, OfASequenceItIsThatOfThePresentFrame) {
    SetFilename("/renders/shot.psd");
    Render().timeType = REND_TIMESEGMENT;
    Host().settings.time = 12 * GetTicksPerFrame();
    EXPECT_EQ(Name(), NativePath("/renders/shot0012.psd"));
}

TEST_F(RenderedFile, IsNothingWithoutAName) {
    Render().output.SetName(_M(""));
    EXPECT_EQ(Name(), "none");
    Set("matchRenderOutputFilename"_param, FALSE);
    EXPECT_EQ(Name(), "none");
    effect->DeleteReference(0);
    EXPECT_EQ(Name(), "none");
}

}  // namespace
