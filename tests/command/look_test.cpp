#include "command/look.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "command/failure.h"
#include "tests/command/temporary_place.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

class LookTest : public FolderTest {
  protected:
    std::string File() const { return Write("a.cube", "LUT_1D_SIZE 2\n1 1 1\n0 0.5 1\n"); }
};

TEST_F(LookTest, GivesTheFrameBufferItsTable) {
    Look look(File());
    EXPECT_EQ(look.File(), PathOf("a.cube"));
    const host::VRayLook given = look.ForFrameBuffer();
    BMM_Color_fl pixels[] = {{1, 1, 1, 1}, {0, 0, 0, 0}};
    given.correct(pixels, 2);
    EXPECT_EQ(pixels[0].r, 0.0F);
    EXPECT_EQ(pixels[0].g, 0.5F);
    EXPECT_EQ(pixels[1].r, 1.0F);
}

TEST_F(LookTest, KnowsWhetherItsTableWasWritten) {
    Look look(File());
    const host::VRayLook given = look.ForFrameBuffer();
    EXPECT_FALSE(look.TakeWritten());
    std::ostringstream stream;
    EXPECT_TRUE(given.writeTable(stream));
    EXPECT_TRUE(stream.str().starts_with("LUT_3D_SIZE 64\n1 1 1\n"));
    EXPECT_TRUE(look.TakeWritten());
    EXPECT_FALSE(look.TakeWritten()) << "since the last call";
    stream.setstate(std::ios::badbit);
    EXPECT_FALSE(given.writeTable(stream));
    EXPECT_FALSE(look.TakeWritten());
    EXPECT_EQ(look.WhyNotWritten(), "its table could not be handed over in " + look.Folder() +
                                        "; make room there, or set " + TemporaryPlace::variable +
                                        " to another folder with a short path");
}

TEST_F(LookTest, HasAFolderWhileItLives) {
    std::string path;
    {
        const Look look(File());
        path = look.Folder();
        EXPECT_TRUE(std::filesystem::is_directory(path));
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(LookTest, WithoutAFolderOfItsOwnItWritesNoTable) {
    const TemporaryPlace nowhere("/nowhere");
    Look look(File());
    EXPECT_EQ(look.Folder(), "");
    std::ostringstream stream;
    EXPECT_FALSE(look.ForFrameBuffer().writeTable(stream));
    EXPECT_EQ(stream.str(), "");
    EXPECT_FALSE(look.TakeWritten());
    EXPECT_EQ(look.WhyNotWritten(),
              "no folder for its table could be made in " + TemporaryFolder().Fault() + "; set " +
                  TemporaryPlace::variable + " to a folder that can be written");
}

TEST_F(LookTest, AFileThatIsNoneIsAnError) {
    EXPECT_THROW(Look(PathOf("b.cube")), InputError);
}

}  // namespace
}  // namespace command
