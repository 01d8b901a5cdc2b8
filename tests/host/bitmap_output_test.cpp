#include "host/bitmap_output.h"

#include <gamma.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/application.h"
#include "host/image_bitmap.h"
#include "host/text.h"
#include "tests/host/recording_format.h"

namespace {

using Calls = std::vector<std::string>;

class BitmapOutputTest : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        host::App().classes.Add(&desc);
        SetOutput(_M("/out/shot.rec"));
    }
    void TearDown() override { host::ResetApplication(); }

    static host::RenderSettings& Render() { return host::App().settings.render; }
    static void SetOutput(const MCHAR* name) { Render().output.SetName(name); }

    RecordingFormatDesc desc;
    host::Owned<host::ImageBitmap> bitmap =
        host::ImageBitmap::FromFloat({3, 1}, std::vector<float>(12));
};

TEST_F(BitmapOutputTest, AClassIsFoundByEachOfItsExtensionsInEitherCase) {
    const auto isFound = [](const MCHAR* name) {
        return host::MakeBitmapWriter(host::App().classes, MSTR(name)) != nullptr;
    };
    for (const MCHAR* name : {_M("a.rec"), _M("/x.y/A.REC"), _M("b.tape"), _M("b.c.TaPe")})
        EXPECT_TRUE(isFound(name)) << host::ToUtf8(name);
    for (const MCHAR* name :
         {_M(""), _M("rec"), _M("a.re"), _M("a.record"), _M("a.rec.exr"), _M("a."), _M("/x.rec/a")})
        EXPECT_FALSE(isFound(name)) << host::ToUtf8(name);
}

TEST_F(BitmapOutputTest, AClassThatOnlyReadsIsPassedBy) {
    RecordingFormatDesc reader(BMMIO_EXTENSION, 2);
    host::ClassDirectory classes;
    classes.Add(&reader);
    EXPECT_EQ(host::MakeBitmapWriter(classes, MSTR(_M("a.rec"))), nullptr);
    classes.Add(&desc);
    const auto format = host::MakeBitmapWriter(classes, MSTR(_M("a.rec")));
    ASSERT_NE(format, nullptr);
    EXPECT_EQ(format->Capability(), BMMIO_WRITER | BMMIO_EXTENSION);
}

TEST_F(BitmapOutputTest, AFrameIsOpenedWrittenAndClosed) {
    EXPECT_EQ(host::WriteRenderOutput(*bitmap, 7), BMMRES_SUCCESS);
    EXPECT_EQ(desc.record.calls,
              (Calls{"open /out/shot.rec", "write 7 of width 3", "close 1", "gone"}));
    EXPECT_EQ(desc.record.gamma, 2.2F);
    gammaMgr.enable = FALSE;
    EXPECT_EQ(host::WriteRenderOutput(*bitmap, 7), BMMRES_SUCCESS);
    EXPECT_EQ(desc.record.gamma, 1.0F);
}

TEST_F(BitmapOutputTest, FramesOfAnAnimationAreNumbered) {
    const auto nameOf = [&](int timeType, int frame) {
        Render().timeType = timeType;
        desc.record.calls.clear();
        EXPECT_EQ(host::WriteRenderOutput(*bitmap, frame), BMMRES_SUCCESS);
        return desc.record.calls.at(0);
    };
    Render().fileNumberBase = 100;
    EXPECT_EQ(nameOf(REND_TIMESINGLE, 7), "open /out/shot.rec");
    EXPECT_EQ(nameOf(REND_TIMESEGMENT, 7), "open /out/shot0107.rec");
    EXPECT_EQ(nameOf(REND_TIMERANGE, -107), "open /out/shot-0007.rec");
    EXPECT_EQ(nameOf(REND_TIMEPICKUP, 7), "open /out/shot0007.rec");
    EXPECT_EQ(nameOf(REND_TIMEPICKUP, 1234567890), "open /out/shot1234567890.rec");
}

TEST_F(BitmapOutputTest, WithoutAClassForTheFileNothingHappens) {
    SetOutput(_M("/out/shot.exr"));
    EXPECT_EQ(host::WriteRenderOutput(*bitmap, 0), BMMRES_NODRIVER);
    EXPECT_TRUE(desc.record.calls.empty());
    EXPECT_TRUE(host::App().log.Entries().empty());
}

TEST_F(BitmapOutputTest, AFileThatDoesntOpenIsNotWritten) {
    desc.record.openResult = BMMRES_INTERNALERROR;
    EXPECT_EQ(host::WriteRenderOutput(*bitmap, 0), BMMRES_INTERNALERROR);
    EXPECT_EQ(desc.record.calls, Calls{"open /out/shot.rec"});
    EXPECT_EQ(host::App().log.Entries().size(), 1U);
}

TEST_F(BitmapOutputTest, AFrameThatCantBeWrittenIsClosedAllTheSame) {
    desc.record.writeResult = BMMRES_CORRUPTFILE;
    EXPECT_EQ(host::WriteRenderOutput(*bitmap, 0), BMMRES_CORRUPTFILE);
    EXPECT_EQ(desc.record.calls,
              (Calls{"open /out/shot.rec", "write 0 of width 3", "close 1", "gone"}));
}

}  // namespace
