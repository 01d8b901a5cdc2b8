#include "command/write_fault.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace command {
namespace {

std::string Explain(std::string_view entry, const std::string& document, int systemError) {
    return ExplainEntry(entry, document, systemError,
                        [](const std::string& path) { return "fault of " + path + "; mend it"; });
}

TEST(WriteFault, AFullDiskIsToldWithWhatToDo) {
    EXPECT_EQ(Explain("Error writing to /a/b.psd.", "/a/b.psd", ENOSPC),
              "Error writing to /a/b.psd: No space left on device; free some space or choose "
              "another place with -o; what it holds now is incomplete");
}

TEST(WriteFault, AFileThatCantBeOpenedIsToldWithTheReason) {
    EXPECT_EQ(Explain("Could not open/create /a/b.psd.", "/a/b.psd", EACCES),
              "Could not open/create /a/b.psd: Permission denied; change its permissions or choose "
              "another place with -o");
    EXPECT_EQ(Explain("Could not open/create /a/b.psd.", "/a/b.psd", ENOENT),
              "Could not open/create /a/b.psd: No such file or directory; create its folder first "
              "or choose another with -o");
}

TEST(WriteFault, AnotherReasonStillSaysWhatToDo) {
    EXPECT_EQ(
        Explain("Error writing to /a.psd.", "/a.psd", EPIPE),
        "Error writing to /a.psd: Broken pipe; choose another place with -o; what it holds now is "
        "incomplete");
    EXPECT_EQ(
        Explain("Error writing to /a.psd.", "/a.psd", 0),
        "Error writing to /a.psd: the system gave no reason; check the disk; what it holds now "
        "is incomplete");
}

TEST(WriteFault, WithoutMemoryTheReasonIsNotTheSystems) {
    EXPECT_EQ(Explain("Not enough memory to write /a.psd.", "/a.psd", EACCES),
              "Not enough memory to write /a.psd; close other programs or save fewer bits a "
              "channel");
}

TEST(WriteFault, AShadowPassThatIsOfNoUseIsToldWithTheReason) {
    EXPECT_EQ(Explain("Error loading shadow pass image file: /s/s.exr!", "/a.psd", EACCES),
              "/s/s.exr: fault of /s/s.exr; mend it; /a.psd is saved without its shadow layer");
    EXPECT_EQ(Explain("Error loading shadow pass image file: a!.exr!", "/a.psd", 0),
              "a!.exr: fault of a!.exr; mend it; /a.psd is saved without its shadow layer");
}

TEST(WriteFault, OtherEntriesGetTheDocumentInFront) {
    EXPECT_EQ(Explain("No valid PSD filename! PSD file will not be saved!", "/a.psd", EACCES),
              "/a.psd: No valid PSD filename! PSD file will not be saved!");
    EXPECT_EQ(Explain("Odd things about /a.psd here.", "/a.psd", 0),
              "Odd things about /a.psd here.");
    EXPECT_EQ(Explain("Odd.", "", 0), "Odd.");
}

}  // namespace
}  // namespace command
