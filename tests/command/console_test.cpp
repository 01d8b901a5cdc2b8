#include "command/console.h"

#include <gtest/gtest.h>

#include "tests/command/captured_streams.h"
#include "tests/command/null_device.h"

namespace command {
namespace {

struct ConsoleTest : testing::Test {
    CapturedStream out;
    CapturedStream err;
    Console console{out.Get(), err.Get()};
};

TEST_F(ConsoleTest, ErrorsAndWarningsAreLinesOnTheErrorStream) {
    console.Error("a.exr: bad");
    console.Warning("a.exr: odd");
    EXPECT_EQ(err.Text(), "veltrane: error: a.exr: bad\nveltrane: warning: a.exr: odd\n");
    EXPECT_EQ(out.Text(), "");
}

TEST_F(ConsoleTest, WhatIsSaidIsALineOnTheOutputStream) {
    console.Say("saved a.psd");
    EXPECT_EQ(out.Text(), "saved a.psd\n");
    EXPECT_EQ(err.Text(), "");
}

TEST_F(ConsoleTest, ALineStaysOneLine) {
    console.Error("a\nb\x1b[0m");
    EXPECT_EQ(err.Text(), "veltrane: error: a b [0m\n");
}

TEST_F(ConsoleTest, QuietLeavesErrorsOnly) {
    console.ShowProgressAs(ProgressStyle::Lines);
    console.BeQuiet();
    console.Error("bad");
    console.Warning("odd");
    console.Say("saved");
    console.Progress(50);
    EXPECT_EQ(err.Text(), "veltrane: error: bad\n");
    EXPECT_EQ(out.Text(), "");
}

TEST_F(ConsoleTest, ListingsComeOutAsTheyStand) {
    console.BeQuiet();
    console.Write("a\n\n  b\n");
    EXPECT_EQ(out.Text(), "a\n\n  b\n");
}

TEST_F(ConsoleTest, ProgressLinesComeWhenTheNumberGrows) {
    console.ShowProgressAs(ProgressStyle::Lines);
    for (const int percent : {0, 0, 1, 42, 42, 7, 100, 100})
        console.Progress(percent);
    EXPECT_EQ(out.Text(), "PROGRESS: 0%\nPROGRESS: 1%\nPROGRESS: 42%\nPROGRESS: 100%\n");
    EXPECT_EQ(err.Text(), "");
}

TEST_F(ConsoleTest, NoProgressIsShownUnlessAskedFor) {
    console.Progress(50);
    EXPECT_EQ(out.Text() + err.Text(), "");
}

TEST_F(ConsoleTest, TheBarIsDrawnInPlaceAndTakenAwayForLines) {
    console.ShowProgressAs(ProgressStyle::Bar);
    console.Progress(50);
    const std::string half = "\r[" + std::string(20, '#') + std::string(20, '.') + "] 50%";
    EXPECT_EQ(err.Text(), half);
    console.Error("bad");
    const std::string line = "\r" + std::string(47, ' ') + "\rveltrane: error: bad\n";
    EXPECT_EQ(err.Text(), half + line);
    console.Progress(50);
    EXPECT_EQ(err.Text(), half + line + half) << "drawn again below the line";
    console.EndProgress();
    EXPECT_EQ(err.Text(), half + line + half + "\r" + std::string(47, ' ') + "\r");
    EXPECT_EQ(out.Text(), "");
}

TEST_F(ConsoleTest, AFileIsNoTerminalAndNeitherIsTheNullDevice) {
    EXPECT_FALSE(IsTerminal(out.Get()));
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> null(std::fopen(nullDevice, "w"),
                                                               std::fclose);
    ASSERT_NE(null, nullptr);
    EXPECT_FALSE(IsTerminal(null.get()));
}

}  // namespace
}  // namespace command
