// Image files read through the host.
#include <bitmap.h>
#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "host/application.h"
#include "host/text.h"
#include "tests/host/temporary_folder.h"

namespace {

class BitmapManagerTest : public testing::Test {
  protected:
    void SetUp() override {
        host::ResetApplication();
        std::ofstream(file) << "x";
        info.SetName(host::FromNativePath(file));
        host::App().imageLoader = [this](const std::string& path) {
            paths.push_back(path);
            return host::ImageBitmap::FromFloat({1, 1}, {0.25F, 0.5F, 0.75F, 1.0F});
        };
    }
    void TearDown() override { host::ResetApplication(); }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path / host::ToNativePath(_M("\u00e9 \U0001f600.png"));
    BitmapInfo info;
    BMMRES status = BMMRES_INTERNALERROR;
    std::vector<std::string> paths;
};

TEST_F(BitmapManagerTest, AFileComesThroughTheApplicationsLoader) {
    const host::Owned<Bitmap> bitmap(TheManager->Load(&info, &status));
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(status, BMMRES_SUCCESS);
    EXPECT_EQ(paths, std::vector<std::string>{host::ToUtf8(info.Name())});
    BMM_Color_fl pixel{};
    ASSERT_EQ(bitmap->Storage()->GetLinearPixels(0, 0, 1, &pixel), 1);
    EXPECT_EQ(pixel.g, 0.5F);
}

TEST_F(BitmapManagerTest, TheStatusNeedNotBeAskedFor) {
    EXPECT_TRUE(host::Owned<Bitmap>(TheManager->Load(&info)));
    info.SetName(_M(""));
    EXPECT_FALSE(TheManager->Load(&info));
}

TEST_F(BitmapManagerTest, AFileThatIsntThereIsNotAskedFor) {
    for (const MSTR& name : {MSTR(), host::FromNativePath(folder.path / "other.png"),
                             host::FromNativePath(folder.path)}) {
        info.SetName(name);
        status = BMMRES_SUCCESS;
        EXPECT_EQ(TheManager->Load(&info, &status), nullptr);
        EXPECT_EQ(status, BMMRES_FILENOTFOUND);
    }
    EXPECT_TRUE(paths.empty());
}

TEST_F(BitmapManagerTest, AFileThatCantBeReadIsBad) {
    const auto fails = [this](host::ImageLoader loader) {
        host::App().imageLoader = std::move(loader);
        status = BMMRES_SUCCESS;
        return TheManager->Load(&info, &status) == nullptr && status == BMMRES_CORRUPTFILE;
    };
    EXPECT_TRUE(fails([](const std::string&) { return nullptr; }));
    EXPECT_TRUE(fails([](const std::string&) -> host::Owned<host::ImageBitmap> {
        throw std::runtime_error("broken");
    }));
    EXPECT_TRUE(fails(nullptr)) << "nobody reads files here";
}

}  // namespace
