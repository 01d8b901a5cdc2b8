// A document that passes 2 GB, for real: too slow and too big for every run of the tests.
#include <gamma.h>

#include <cstring>
#include <stdexcept>

#include "tests/effect/effect_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Four channels of the layer and three of the merged image, in raw floats, pass 2 GB by less than
// 2 %: the overflow comes to light only in the last channel.
constexpr int frameWidth = 30000;
constexpr int frameHeight = 2600;
constexpr std::uint64_t channelBytes = std::uint64_t{4} * frameWidth * frameHeight;
static_assert(7 * channelBytes > 2147483648U && 6 * channelBytes < 2147483648U);

// A picture that is computed: no memory holds it.
class ComputedStorage : public BitmapStorage {
  public:
    ComputedStorage() : row(frameWidth) {
        for (std::size_t x = 0; x < row.size(); ++x) {
            const auto value = static_cast<float>(x);
            row[x] = {value, value + 0.25F, value + 0.5F, 1.0F};
        }
    }
    int Width() override { return frameWidth; }
    int Height() override { return frameHeight; }
    float Aspect() override { return 1.0F; }
    DWORD Flags() override { return 0; }
    int GetLinearPixels(int, int, int, BMM_Color_64*) override { return 0; }
    int GetLinearPixels(int x, int y, int pixels, BMM_Color_fl* ptr) override {
        std::copy_n(row.begin() + x, pixels, ptr);
        // Each row is told from the others by its first pixel.
        if (x == 0) ptr[0].r = ptr[0].g = ptr[0].b = static_cast<float>(-y);
        return 1;
    }

  private:
    std::vector<BMM_Color_fl> row;
};

class ComputedBitmap : public Bitmap {
  public:
    BitmapStorage* Storage() override { return &storage; }
    void DeleteThis() override {}

  private:
    ComputedStorage storage;
};

// Goes through a large document by its lengths, without reading its pixels.
class Walk {
  public:
    explicit Walk(const std::filesystem::path& path)
        : file(path, std::ios::binary), size(std::filesystem::file_size(path)) {}

    std::uint64_t Number(int bytes) {
        std::uint64_t number = 0;
        for (int i = 0; i < bytes; ++i) {
            number = number << 8 | static_cast<std::uint8_t>(file.get());
        }
        if (!file) throw std::runtime_error("the file ends too early");
        return number;
    }
    std::string Key() {
        std::string key(4, '\0');
        file.read(key.data(), 4);
        return key;
    }
    float Float() {
        const auto bits = static_cast<std::uint32_t>(Number(4));
        float value = 0.0F;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    std::uint64_t Position() { return static_cast<std::uint64_t>(std::streamoff(file.tellg())); }
    void GoTo(std::uint64_t position) {
        if (position > size) throw std::runtime_error("a length leads beyond the file");
        file.seekg(static_cast<std::streamoff>(position));
    }
    void Skip(std::uint64_t bytes) { GoTo(Position() + bytes); }
    std::uint64_t Size() const { return size; }

  private:
    std::ifstream file;
    std::uint64_t size;
};

// The pixels of a raw channel that starts here, by their corners; goes behind it.
void ExpectChannel(Walk& walk, float offset) {
    const std::uint64_t start = walk.Position();
    EXPECT_EQ(walk.Float(), 0.0F);
    EXPECT_EQ(walk.Float(), 1.0F + offset);
    walk.GoTo(start + channelBytes - std::uint64_t{4} * frameWidth);
    EXPECT_EQ(walk.Float(), static_cast<float>(1 - frameHeight)) << "the last row begins";
    walk.GoTo(start + channelBytes - 4);
    EXPECT_EQ(walk.Float(), static_cast<float>(frameWidth - 1) + offset) << "the last pixel";
}

void ExpectLayers(Walk& walk) {
    EXPECT_EQ(walk.Number(2), 1U) << "layers";
    walk.Skip(16);
    ASSERT_EQ(walk.Number(2), 4U) << "channels";
    for (const std::uint64_t id : {0xFFFFU, 0U, 1U, 2U}) {
        EXPECT_EQ(walk.Number(2), id);
        EXPECT_EQ(walk.Number(8), channelBytes + 2);
    }
    EXPECT_EQ(walk.Key(), "8BIM");
    EXPECT_EQ(walk.Key(), "norm");
    walk.Skip(4);
    walk.Skip(walk.Number(4));
    EXPECT_EQ(walk.Number(2), 0U);
    walk.Skip(channelBytes);
    for (const float offset : {0.0F, 0.25F, 0.5F}) {
        EXPECT_EQ(walk.Number(2), 0U);
        ExpectChannel(walk, offset);
    }
}

void ExpectLargeDocument(const std::filesystem::path& path) {
    Walk walk(path);
    EXPECT_EQ(walk.Key(), "8BPS");
    EXPECT_EQ(walk.Number(2), 2U) << "the large format";
    walk.Skip(6);
    EXPECT_EQ(walk.Number(2), 3U);
    EXPECT_EQ(walk.Number(4), static_cast<std::uint64_t>(frameHeight));
    EXPECT_EQ(walk.Number(4), static_cast<std::uint64_t>(frameWidth));
    EXPECT_EQ(walk.Number(2), 32U);
    EXPECT_EQ(walk.Number(2), 3U);
    walk.Skip(walk.Number(4));
    walk.Skip(walk.Number(4));
    const std::uint64_t sectionLength = walk.Number(8);
    const std::uint64_t sectionEnd = walk.Position() + sectionLength;
    EXPECT_EQ(walk.Number(8), 0U);
    EXPECT_EQ(walk.Number(4), 0U);
    EXPECT_EQ(walk.Key(), "8B64");
    EXPECT_EQ(walk.Key(), "Lr32");
    const std::uint64_t layersLength = walk.Number(8);
    const std::uint64_t layersEnd = walk.Position() + layersLength;
    ExpectLayers(walk);
    EXPECT_LE(layersEnd - walk.Position(), 1U) << "padding";
    walk.GoTo(layersEnd + (4 - (layersLength + 8) % 4) % 4);
    EXPECT_EQ(walk.Key(), "8BIM");
    EXPECT_EQ(walk.Key(), "LMsk");
    walk.Skip(walk.Number(8));
    EXPECT_LT(sectionEnd - walk.Position(), 4U) << "padding";
    walk.GoTo(sectionEnd);
    EXPECT_EQ(walk.Number(2), 0U);
    for (const float offset : {0.0F, 0.25F, 0.5F})
        ExpectChannel(walk, offset);
    EXPECT_EQ(walk.Position(), walk.Size()) << "the exact end";
}

class TwoGigabytes : public EffectTest {
  protected:
    void SetUp() override {
        constexpr std::uintmax_t needed = std::uintmax_t{6} << 30;
        const std::uintmax_t free = std::filesystem::space(folder.path).available;
        if (free < needed) {
            GTEST_SKIP() << "needs 6 GB of disk in " << folder.path << ", which has "
                         << (free >> 20) << " MB";
        }
        gammaMgr.enable = FALSE;
        Set("bitDepth"_param, 32);
        Set("compression"_param, 0);
        Set("outputRenderAs"_param, 1);
        Render().timeType = REND_TIMERANGE;
    }
    [[nodiscard]] std::vector<std::string> Documents() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path)) {
            if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
        }
        return names;
    }
};

TEST_F(TwoGigabytes, AreSavedInTheLargeFormatUnderTheSameNameAtEachFrameThatPassesThem) {
    const std::string warning =
        "Could not save as PSD (file size limit of 2 GB was exceeded). Now resaving as PSB (Large "
        "Document Format). Please change veltrane file format to PSB once render is finished.";
    ComputedBitmap bitmap;
    effect->RenderBegin(0, 0);
    for (const int frame : {0, 1}) {
        time = frame * GetTicksPerFrame();
        RenderStartedFrame(&bitmap);
        EXPECT_THAT(TakeLog(), ElementsAre(WarningWithDialog(warning)));
        EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(warning)));
        const std::string name = "frame000" + std::to_string(frame) + ".psd";
        ASSERT_THAT(Documents(), ElementsAre(name)) << "one file";
        ExpectLargeDocument(File(name.c_str()));
        std::filesystem::remove(File(name.c_str()));
    }
    effect->RenderEnd(time);
}

TEST_F(TwoGigabytes, InTheLargeFormatFromTheStartAreSavedWithoutAWord) {
    ComputedBitmap bitmap;
    SetFilename(File("frame.psb"));
    Render().timeType = REND_TIMESINGLE;
    RenderFrame(&bitmap);
    EXPECT_THAT(TakeLog(), IsEmpty());
    ASSERT_THAT(Documents(), ElementsAre("frame.psb"));
    ExpectLargeDocument(File("frame.psb"));
}

}  // namespace
