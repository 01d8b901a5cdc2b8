#include "host/win32/plugin_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host/input_error.h"
#include "tests/host/temporary_folder.h"

namespace {

using testing::EndsWith;
using testing::ThrowsMessage;

// Beside the test program; another program of the build makes it.
std::filesystem::path Beside(const wchar_t* name) {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return std::filesystem::path(program).parent_path() / name;
}

TEST(PluginLibrary, TellsWhatTheLibraryOffers) {
    const host::PluginLibrary library(Beside(L"veltrane.dlv"));
    EXPECT_EQ(library.Description(), MSTR(_M("veltrane")));
    EXPECT_EQ(library.Version(), 0x52083400U);
    ASSERT_EQ(library.Classes().size(), 3U);
    EXPECT_EQ(library.Classes()[0]->SuperClassID(), RENDER_EFFECT_CLASS_ID);
    EXPECT_EQ(library.Classes()[1]->SuperClassID(), REF_TARGET_CLASS_ID);
    EXPECT_EQ(library.Classes()[2]->SuperClassID(), BMM_IO_CLASS_ID);
    EXPECT_EQ(library.ClassAt(3), nullptr);
    EXPECT_EQ(library.ClassAt(-1), nullptr);
}

TEST(PluginLibrary, ClassesAreOfTheLibraryThatWasLoaded) {
    const host::PluginLibrary library(Beside(L"veltrane.dlv"));
    for (ClassDesc* desc : library.Classes())
        EXPECT_EQ(desc->HInstance(), GetModuleHandleW(L"veltrane.dlv"));
}

TEST(PluginLibrary, AMissingFileIsTold) {
    EXPECT_THAT(
        [] { host::PluginLibrary(L"C:\\none.dlv"); },
        ThrowsMessage<host::InputError>("C:\\none.dlv: cannot be loaded (system error 126)"));
}

TEST(PluginLibrary, AFileThatIsNoLibraryIsTold) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path / "text.dlv";
    std::ofstream(file) << "text";
    EXPECT_THAT(
        [&] { host::PluginLibrary library(file); },
        ThrowsMessage<host::InputError>(EndsWith("text.dlv: cannot be loaded (system error 193)")));
}

TEST(PluginLibrary, ALibraryWithoutTheEntryPointsIsTold) {
    EXPECT_THAT([] { host::PluginLibrary library(Beside(L"veltrane_host.dll")); },
                ThrowsMessage<host::InputError>(EndsWith(
                    "veltrane_host.dll: is no plug-in; it has no function LibDescription")));
}

}  // namespace
