#include "plugin/null_writer.h"

#include <memory>

#include "plugin/class_descriptors.h"
#include "tests/effect/effect_fixture.h"

namespace {

// Both formats, as the host gets them.
class NullWriter : public EffectTest {
  protected:
    static std::unique_ptr<BitmapIO> NullExport() { return Make(*plugin::ClassDescriptors()[2]); }
    static std::unique_ptr<BitmapIO> PSDExport() {
        return Make(plugin::PSDExportBitmapIODescriptor());
    }
    static std::vector<std::unique_ptr<BitmapIO>> Both() {
        std::vector<std::unique_ptr<BitmapIO>> both;
        both.push_back(NullExport());
        both.push_back(PSDExport());
        return both;
    }

    // The log's line and the box that one error of the format makes.
    void ExpectError(const std::string& text) {
        EXPECT_THAT(TakeLog(),
                    testing::ElementsAre(LogLine{SYSLOG_ERROR, true, "Image I/O Error", text}));
        EXPECT_THAT(TakeBoxes(), testing::ElementsAre(Box{0x30, 0, "Image I/O Error", text}));
    }

    BitmapInfo info{_M("/out/frame.xxx")};
    host::Owned<host::ImageBitmap> bitmap = Image(2, 1);

  private:
    static std::unique_ptr<BitmapIO> Make(ClassDesc& descriptor) {
        return std::unique_ptr<BitmapIO>(static_cast<BitmapIO*>(descriptor.Create()));
    }
};

TEST_F(NullWriter, NullExportCallsItselfNotSaving) {
    const auto format = NullExport();
    EXPECT_EQ(format->ExtCount(), 1);
    for (const int n : {0, 1, 7, -1})
        EXPECT_EQ(host::ToUtf8(format->Ext(n)), "xxx") << n;
    EXPECT_EQ(host::ToUtf8(format->LongDesc()), "Don't Save File");
    EXPECT_EQ(host::ToUtf8(format->ShortDesc()), "Don't Save File");
}

TEST_F(NullWriter, PSDExportCallsItselfADocument) {
    const auto format = PSDExport();
    EXPECT_EQ(format->ExtCount(), 1);
    for (const int n : {0, 1, 7, -1})
        EXPECT_EQ(host::ToUtf8(format->Ext(n)), "PSD") << n;
    EXPECT_EQ(host::ToUtf8(format->LongDesc()), "Photoshop Document (veltrane)");
    EXPECT_EQ(host::ToUtf8(format->ShortDesc()), "PSD");
}

TEST_F(NullWriter, BothAreTheSameInAllElse) {
    for (const auto& format : Both()) {
        EXPECT_EQ(host::ToUtf8(format->AuthorName()), "veltrane");
        EXPECT_EQ(host::ToUtf8(format->CopyrightMessage()), "Copyright the authors of veltrane");
        EXPECT_EQ(format->Version(), 100U);
        EXPECT_EQ(format->Capability(), 0x40000026U);
        format->ShowAbout(nullptr);
        EXPECT_EQ(format->ShowControl(nullptr, 0), 1);
        EXPECT_EQ(format->EvaluateConfigure(), 0U);
        EXPECT_EQ(format->LoadConfigure(nullptr), 1);
        EXPECT_EQ(format->SaveConfigure(nullptr), 1);
        BMMRES status = BMMRES_SUCCESS;
        EXPECT_EQ(format->Load(&info, nullptr, &status), nullptr);
    }
}

TEST_F(NullWriter, TakesAFrameAndWritesNoFile) {
    for (const auto& format : Both()) {
        info.SetName(host::FromNativePath(File("frame.xxx")));
        EXPECT_EQ(format->OpenMode(), 0);
        EXPECT_EQ(format->OpenOutput(&info, bitmap.get()), BMMRES_SUCCESS);
        EXPECT_EQ(format->OpenMode(), 2);
        EXPECT_EQ(format->Map(), bitmap.get());
        EXPECT_EQ(format->Write(0), BMMRES_SUCCESS);
        EXPECT_EQ(format->Write(1), BMMRES_SUCCESS);
        EXPECT_EQ(format->Close(BMM_CLOSE_COMPLETE), 1);
        EXPECT_FALSE(Exists("frame.xxx"));
    }
}

TEST_F(NullWriter, KeepsWhatItWasOpenedWith) {
    class Looker : public plugin::NullWriter {
      public:
        Looker() : NullWriter(plugin::nullExport) {}
        BitmapInfo& Info() { return bi; }
    };
    Looker format;
    info.SetGamma(2.2F);
    ASSERT_EQ(format.OpenOutput(&info, bitmap.get()), BMMRES_SUCCESS);
    EXPECT_EQ(host::ToUtf8(format.Info().Name()), "/out/frame.xxx");
    EXPECT_EQ(format.Info().Gamma(), 2.2F);
}

TEST_F(NullWriter, OpeningTwiceFailsInTheWrongState) {
    for (const auto& format : Both()) {
        ASSERT_EQ(format->OpenOutput(&info, bitmap.get()), BMMRES_SUCCESS);
        BitmapInfo other(_M("/out/other.xxx"));
        const host::Owned<host::ImageBitmap> otherBitmap = Image(1, 1);
        EXPECT_EQ(format->OpenOutput(&other, otherBitmap.get()), 12);
        // It is told of the file that is open, which stays as it was.
        ExpectError(host::ToUtf8(format->LongDesc()) +
                    ": error 12 of image file \"/out/frame.xxx\".");
        EXPECT_EQ(format->Map(), bitmap.get());
        EXPECT_EQ(format->Write(0), BMMRES_SUCCESS);
    }
}

TEST_F(NullWriter, AnObjectTakesOneOutput) {
    const auto format = NullExport();
    ASSERT_EQ(format->OpenOutput(&info, bitmap.get()), BMMRES_SUCCESS);
    ASSERT_EQ(format->Close(BMM_CLOSE_COMPLETE), 1);
    EXPECT_EQ(format->OpenMode(), 2);
    EXPECT_EQ(format->OpenOutput(&info, bitmap.get()), 12);
    ExpectError("Don't Save File: error 12 of image file \"/out/frame.xxx\".");
}

TEST_F(NullWriter, WithoutABitmapItDoesntOpen) {
    for (const auto& format : Both()) {
        EXPECT_EQ(format->OpenOutput(&info, nullptr), 12);
        ExpectError(host::ToUtf8(format->LongDesc()) + ": error 12 of image file \"\".");
        EXPECT_EQ(format->OpenMode(), 0);
        EXPECT_EQ(format->Map(), nullptr);
        EXPECT_EQ(format->OpenOutput(nullptr, bitmap.get()), 12);
        ExpectError(host::ToUtf8(format->LongDesc()) + ": error 12 of image file \"\".");
        EXPECT_EQ(format->OpenOutput(&info, bitmap.get()), BMMRES_SUCCESS);
    }
}

TEST_F(NullWriter, WritingBeforeOpeningFailsInTheWrongState) {
    for (const auto& format : Both()) {
        EXPECT_EQ(format->Write(0), 12);
        ExpectError(host::ToUtf8(format->LongDesc()) + ": error 12 of image file \"\".");
    }
}

}  // namespace
