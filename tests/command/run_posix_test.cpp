// A device that is always full is something that Windows hasn't got.
#include <gtest/gtest.h>

#include <filesystem>

#include "command/run.h"
#include "tests/command/captured_streams.h"
#include "tests/command/exr_samples.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

class FullDisk : public FolderTest {};

TEST_F(FullDisk, ReachesTheUser) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    const std::string input = Write("a.exr", exr_samples::Write(exr_samples::Part()));
    const std::string output = PathOf("full.psd");
    std::filesystem::create_symlink("/dev/full", output);
    const CapturedStream out;
    const CapturedStream err;
    EXPECT_EQ(command::Run({"save", input, "-o", output}, out.Get(), err.Get()), exitNotSaved);
    EXPECT_EQ(err.Text(), "veltrane: error: Error writing to " + output +
                              ": No space left on device; free some space or choose another place "
                              "with -o; what it holds now is incomplete\n");
    EXPECT_EQ(out.Text(), "");
}

}  // namespace
}  // namespace command
