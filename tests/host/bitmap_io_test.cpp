// What formats of image files get from the host.
#include <bitmap.h>
#include <gtest/gtest.h>

#include "host/application.h"
#include "host/text.h"
#include "tests/host/recording_format.h"

namespace {

class BitmapIOTest : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    void TearDown() override { host::ResetApplication(); }

    static std::string LastLine() {
        const auto& entries = host::App().log.Entries();
        return entries.empty() ? "" : host::ToUtf8(entries.back().text);
    }

    FormatCalls record;
    RecordingFormat format{record, BMMIO_WRITER};
};

TEST_F(BitmapIOTest, AnObjectIsNotOpenAtFirst) {
    EXPECT_EQ(format.OpenMode(), BMM_NOT_OPEN);
    EXPECT_EQ(format.Map(), nullptr);
}

TEST_F(BitmapIOTest, WhatAFormatDoesntHaveAnswersNo) {
    EXPECT_EQ(format.ShowControl(nullptr, 0), FALSE);
    EXPECT_EQ(format.EvaluateConfigure(), 0U);
    EXPECT_EQ(format.LoadConfigure(nullptr), FALSE);
    EXPECT_EQ(format.SaveConfigure(nullptr), FALSE);
    EXPECT_EQ(format.Load(nullptr, nullptr, nullptr), nullptr);
}

TEST_F(BitmapIOTest, AnErrorIsToldWithItsFileAndComesBack) {
    BitmapInfo info(_M("/out/\u00e9.rec"));
    EXPECT_EQ(format.ProcessImageIOError(&info, BMMRES_INTERNALERROR), BMMRES_INTERNALERROR);
    ASSERT_EQ(host::App().log.Entries().size(), 1U);
    const host::LogRecord& entry = host::App().log.Entries()[0];
    EXPECT_EQ(entry.type, SYSLOG_ERROR);
    EXPECT_EQ(host::ToUtf8(entry.title), "Image I/O Error");
    EXPECT_EQ(LastLine(), "Recording: error 12 of image file \"/out/\u00e9.rec\".");
    EXPECT_EQ(host::App().boxes.Shown().size(), 1U);

    EXPECT_EQ(format.ProcessImageIOError(nullptr, BMMRES_NODRIVER), BMMRES_NODRIVER);
    EXPECT_EQ(LastLine(), "Recording: error 4 of image file \"\".");
}

TEST_F(BitmapIOTest, AQuietHostOnlyKeepsTheLine) {
    host::App().settings.quiet = true;
    BitmapInfo info(_M("a.rec"));
    EXPECT_EQ(format.ProcessImageIOError(&info, BMMRES_INTERNALERROR), BMMRES_INTERNALERROR);
    EXPECT_EQ(LastLine(), "Recording: error 12 of image file \"a.rec\".");
    EXPECT_TRUE(host::App().boxes.Shown().empty());
}

TEST(BitmapInfo, TakesOverANameAndKeepsItsGamma) {
    BitmapInfo from(_M("a.exr"));
    from.SetGamma(2.2F);
    BitmapInfo to;
    EXPECT_EQ(to.Gamma(), 1.0F);
    to.CopyImageInfo(&from);
    EXPECT_EQ(MSTR(to.Name()), MSTR(_M("a.exr")));
    EXPECT_EQ(to.Gamma(), 1.0F);
}

}  // namespace
