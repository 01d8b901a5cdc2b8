#include "effect/shadows_group.h"

#include "tests/effect/fill_frame.h"
#include "tests/host/native_path.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ShadowsGroup : public FillFrameTest {
  protected:
    ShadowsGroup() {
        Host().imageLoader = [this](const std::string& path) {
            loaded.push_back(path);
            return Image(imageWidth, imageHeight);
        };
    }

    // A file that is there, and named in the settings.
    std::string UseFile(const std::string& name) {
        const std::filesystem::path path = folder.path / name;
        WriteFile(path, "pixels");
        SetText("shadowPassSource"_param, Text(path));
        return path.string();
    }
    void Add() {
        effect::Frame frame = FrameOf(image.get());
        frame.time = time;
        frame.temporaryBitmap = &temporary;
        effect::AddShadowsGroup(builder, frame);
    }
    // What a file of no use leaves behind.
    void ExpectError(const std::string& path) {
        Add();
        EXPECT_THAT(
            TakeLog(),
            ElementsAre(ErrorWithDialog("Error loading shadow pass image file: " + path + "!")));
        EXPECT_EQ(TakeBoxes().size(), 1U);
        EXPECT_THAT(Document().children, IsEmpty());
        EXPECT_FALSE(temporary);
    }

    int imageWidth = width;
    int imageHeight = height;
    std::vector<std::string> loaded;
    effect::OwnedBitmap temporary;
};

TEST_F(ShadowsGroup, WithoutAFileIsNotMadeAndSaysNothing) {
    Add();
    EXPECT_THAT(Document().children, IsEmpty());
    EXPECT_THAT(TakeLog(), IsEmpty());
    EXPECT_THAT(loaded, IsEmpty());
}

TEST_F(ShadowsGroup, IsABlackFillThatMultipliesWhereTheImageHasAlpha) {
    const std::string path = UseFile("shadow.exr");
    Add();
    EXPECT_THAT(loaded, ElementsAre(path));
    EXPECT_EQ(Fill().name, "Shadows");
    EXPECT_EQ(Fill().unicodeName, u"Shadows");
    EXPECT_EQ(Fill().blendKey, 0x6D756C20U) << "mul ";
    EXPECT_EQ(Fill().flags, 0);
    EXPECT_EQ(LevelsOf(Fill()), (std::vector{0.0, 0.0, 0.0}));
    ASSERT_TRUE(Fill().mask);
    EXPECT_EQ(SampleOf(Fill().mask), ImageAt(3));
    EXPECT_TRUE(Fill().maskEnabled);
    EXPECT_FALSE(Fill().clipping);
}

TEST_F(ShadowsGroup, OfAnyOtherStyleIsABlackLayerWithTheAlphaAsItsTransparency) {
    UseFile("shadow.exr");
    for (const int style : {1, 2, -1}) {
        Document().children.clear();
        Set("shadowPassLayerStyle"_param, style);
        Add();
        ASSERT_EQ(Document().children.size(), 1U);
        EXPECT_EQ(Layer(0).name, "Shadows");
        EXPECT_EQ(Layer(0).blendKey, psdfile::blendKeyNormal);
        EXPECT_EQ(Layer(0).flags, 0);
        EXPECT_EQ(Layer(0).red, black);
        EXPECT_EQ(Layer(0).green, black);
        EXPECT_EQ(Layer(0).blue, black);
        EXPECT_EQ(SampleOf(Layer(0).alpha), ImageAt(3));
        EXPECT_FALSE(Layer(0).mask);
        EXPECT_FALSE(Layer(0).clipping);
    }
}

TEST_F(ShadowsGroup, MayHaveANameOfTheUsers) {
    UseFile("shadow.exr");
    SetText("shadowPassLayerName"_param, _M("Contact"));
    Add();
    EXPECT_EQ(Fill().name, "Contact");
}

TEST_F(ShadowsGroup, KeepsItsImageUntilTheDocumentIsWritten) {
    UseFile("shadow.exr");
    Add();
    ASSERT_TRUE(temporary);
    EXPECT_EQ(temporary->Storage()->Width(), width);
}

TEST_F(ShadowsGroup, OfASequenceTakesTheFramesOwnFile) {
    UseFile("shadow.exr");
    const std::string numbered = UseFile("shadow0112.exr");
    UseFile("shadow0012.exr");
    SetText("shadowPassSource"_param, Text(File("shadow.exr")));
    Render().timeType = REND_TIMERANGE;
    Render().fileNumberBase = 100;
    time = 12 * GetTicksPerFrame();
    Add();
    EXPECT_THAT(loaded, ElementsAre(numbered));
}

TEST_F(ShadowsGroup, OfARelativeNameTakesTheAbsoluteOne) {
    SetText("shadowPassSource"_param, _M("no/such/../shadow.exr"));
    ExpectError((std::filesystem::current_path() / "no" / "shadow.exr").string());
}

TEST_F(ShadowsGroup, OfAFileThatIsMissingIsAnError) {
    SetText("shadowPassSource"_param, Text(File("missing.exr")));
    ExpectError(File("missing.exr").string());
    EXPECT_THAT(loaded, IsEmpty());
}

TEST_F(ShadowsGroup, OfASequenceNamesTheNumberedFileThatIsMissing) {
    UseFile("shadow.exr");
    Render().timeType = REND_TIMEPICKUP;
    time = 7 * GetTicksPerFrame();
    ExpectError(File("shadow0007.exr").string());
}

TEST_F(ShadowsGroup, OfANameThatIsNoneIsAnError) {
    const std::string leaf(256, 'x');
    SetText("shadowPassSource"_param, host::FromUtf8(leaf));
    ExpectError(leaf);
}

TEST_F(ShadowsGroup, OfANameWithoutRoomForItsNumberIsAnError) {
    Render().timeType = REND_TIMERANGE;
    const std::string path = std::string("/").append(128, 'd').append("/").append(128, 'n');
    SetText("shadowPassSource"_param, host::FromUtf8(path));
    ExpectError(NativePath(path));
}

TEST_F(ShadowsGroup, OfAFileThatCantBeReadIsAnError) {
    const std::string path = UseFile("broken.exr");
    Host().imageLoader = [](const std::string&) { return host::Owned<host::ImageBitmap>(); };
    ExpectError(path);
}

TEST_F(ShadowsGroup, OfAnImageOfAnotherSizeIsAnError) {
    const std::string path = UseFile("shadow.exr");
    const std::pair<int, int> sizes[] = {
        {width - 1, height}, {width + 1, height}, {width, height - 1}, {width, height + 1}};
    for (const auto& [columns, rows] : sizes) {
        imageWidth = columns;
        imageHeight = rows;
        ExpectError(path);
    }
}

TEST_F(ShadowsGroup, OfAQuietHostOpensNoBox) {
    SetText("shadowPassSource"_param, Text(File("missing.exr")));
    Host().settings.quiet = true;
    Add();
    EXPECT_THAT(TakeBoxes(), IsEmpty());
    EXPECT_EQ(TakeLog().size(), 1U);
}

}  // namespace
