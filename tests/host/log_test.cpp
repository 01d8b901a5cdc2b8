#include "host/log.h"

#include <gtest/gtest.h>
#include <maxapi.h>

#include "host/application.h"

namespace {

class LogTest : public testing::Test {
  protected:
    void SetUp() override { host::ResetApplication(); }
    host::Log& TheLog() { return host::App().log; }
};

TEST_F(LogTest, AnEntryIsKeptWithItsTextFormatted) {
    GetCOREInterface()->Log()->LogEntry(SYSLOG_WARN, NO_DIALOG, _M("title"), _M("%s: %d"),
                                        _M("frame"), 7);
    ASSERT_EQ(TheLog().Entries().size(), 1U);
    const host::LogRecord& entry = TheLog().Entries()[0];
    EXPECT_EQ(entry.type, SYSLOG_WARN);
    EXPECT_FALSE(entry.dialogue);
    EXPECT_EQ(entry.title, MSTR(_M("title")));
    EXPECT_EQ(entry.text, MSTR(_M("frame: 7")));
}

TEST_F(LogTest, TheSinkGetsEachEntryAsItIsMade) {
    std::vector<MSTR> heard;
    TheLog().SetSink([&](const host::LogRecord& entry) { heard.push_back(entry.text); });
    TheLog().LogEntry(SYSLOG_INFO, NO_DIALOG, _M(""), _M("one"));
    TheLog().LogEntry(SYSLOG_INFO, NO_DIALOG, _M(""), _M("two"));
    EXPECT_EQ(heard, (std::vector<MSTR>{MSTR(_M("one")), MSTR(_M("two"))}));
}

TEST_F(LogTest, AnEntryWithADialogueIsABoxUnlessTheHostIsQuiet) {
    TheLog().LogEntry(SYSLOG_ERROR, DISPLAY_DIALOG, _M("title"), _M("text"));
    ASSERT_EQ(host::App().boxes.Shown().size(), 1U);
    EXPECT_EQ(host::App().boxes.Shown()[0].text, MSTR(_M("text")));
    EXPECT_EQ(host::App().boxes.Shown()[0].caption, MSTR(_M("title")));
    TheLog().LogEntry(SYSLOG_ERROR, NO_DIALOG, _M("title"), _M("text"));
    EXPECT_EQ(host::App().boxes.Shown().size(), 1U);
    host::App().settings.quiet = true;
    TheLog().LogEntry(SYSLOG_ERROR, DISPLAY_DIALOG, _M("title"), _M("text"));
    EXPECT_EQ(host::App().boxes.Shown().size(), 1U);
    EXPECT_EQ(TheLog().Entries().size(), 3U);
}

TEST_F(LogTest, ClearForgetsTheEntries) {
    TheLog().LogEntry(SYSLOG_ERROR, NO_DIALOG, _M(""), _M("text"));
    TheLog().Clear();
    EXPECT_TRUE(TheLog().Entries().empty());
}

TEST_F(LogTest, DebugPrintGoesOnlyToWhoListens) {
    DebugPrint(_M("unheard"));
    std::vector<MSTR> heard;
    TheLog().SetDebugSink([&](const MSTR& text) { heard.push_back(text); });
    DebugPrint(_M("done = %d\n"), 3);
    EXPECT_EQ(heard, std::vector<MSTR>{MSTR(_M("done = 3\n"))});
    EXPECT_TRUE(TheLog().Entries().empty());
}

}  // namespace
