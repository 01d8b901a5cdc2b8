#include <gamma.h>

#include <csignal>
#include <cstring>
#include <stdexcept>

#ifndef _WIN32
#include <sys/resource.h>
#include <unistd.h>
#endif

#include "effect/renderer_kinds.h"
#include "effect/write_progress.h"
#include "host/temporary_folder.h"
#include "sources/id_bounds.h"
#include "tests/documents/section_walker.h"
#include "tests/effect/effect_fixture.h"
#include "tests/effect/matte_frame.h"
#include "tests/effect/vray_frame.h"

namespace {

using psdfile::WalkDocument;
using psdfile::WalkedDocument;
using psdfile::WalkedLayer;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr Class_ID scanline{0x00000001, 0x00000000};

class Apply : public EffectTest {
  protected:
    Apply() {
        UseRenderer(scanline);
        gammaMgr.enable = FALSE;
    }

    // A frame as RenderBegin and the notification leave it, ready for Apply.
    void Begin() {
        effect->RenderBegin(time, 0);
        context.renderer = frameRenderer ? frameRenderer : Host().renderer.get();
        host::Broadcast(NOTIFY_PRE_RENDERFRAME, &context);
    }

    WalkedDocument Saved(const char* name = "frame.psd", bool psb = false) {
        return WalkDocument(FileBytes(File(name)), psb);
    }
    WalkedDocument Save(Bitmap* bitmap) {
        RenderFrame(bitmap);
        return Saved();
    }

    static std::string Resource(const WalkedDocument& document, int id) {
        for (const psdfile::WalkedResource& resource : document.resources) {
            if (resource.id == id) return resource.data;
        }
        return "absent";
    }
    // The sample of pixel (x, y), of big-endian samples.
    static int Sample(const std::string& pixels, int bytes, int width, int x, int y) {
        int sample = 0;
        for (int i = 0; i < bytes; ++i) {
            sample =
                sample << 8 | static_cast<unsigned char>(
                                  pixels[static_cast<std::size_t>((y * width + x) * bytes + i)]);
        }
        return sample;
    }
};

TEST_F(Apply, SavesTheFrameAsALayerOverTheMergedImage) {
    const auto frame = Image(3, 2);
    const WalkedDocument document = Save(frame.get());
    EXPECT_FALSE(document.psb);
    EXPECT_EQ(document.width, 3);
    EXPECT_EQ(document.height, 2);
    EXPECT_EQ(document.depth, 16);
    EXPECT_EQ(document.channelCount, 4) << "red, green, blue and transparency";
    EXPECT_TRUE(document.mergedTransparency);
    ASSERT_EQ(document.layers.size(), 1U);
    const WalkedLayer& layer = document.layers[0];
    EXPECT_EQ(layer.name, "Render");
    EXPECT_EQ(layer.blendKey, "norm");
    EXPECT_EQ(layer.flags, 0);
    EXPECT_TRUE(layer.hasMask);
    ASSERT_EQ(layer.channels.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
        const int id = layer.channels[i].id;
        EXPECT_EQ(id, static_cast<int>(i) - 1 == 3 ? -2 : static_cast<int>(i) - 1);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < 3; ++x) {
                const int expected = id == -1   ? 65535
                                     : id == -2 ? ImageSample(x, y, 3)
                                                : ImageSample(x, y, id);
                EXPECT_EQ(Sample(layer.channels[i].pixels, 2, 3, x, y), expected)
                    << "channel " << id << " at " << x << ", " << y;
            }
        }
    }
    ASSERT_EQ(document.imageChannels.size(), 4U);
    for (int component = 0; component < 4; ++component) {
        EXPECT_EQ(Sample(document.imageChannels[static_cast<std::size_t>(component)], 2, 3, 2, 1),
                  ImageSample(2, 1, component));
    }
}

TEST_F(Apply, TheSameFrameGivesTheSameBytes) {
    const auto frame = Image(17, 5);
    for (const int bitDepth : {8, 16, 32}) {
        Set("bitDepth"_param, bitDepth);
        RenderFrame(frame.get());
        const std::string first = FileBytes(File("frame.psd"));
        std::filesystem::remove(File("frame.psd"));
        RenderFrame(frame.get());
        EXPECT_EQ(FileBytes(File("frame.psd")), first) << bitDepth;
        std::filesystem::remove(File("frame.psd"));
    }
}

TEST_F(Apply, TheHostsBitmapIsOnlyRead) {
    const auto frame = Image(5, 4);
    RenderFrame(frame.get());
    std::vector<BMM_Color_64> row(5);
    ASSERT_EQ(frame->Storage()->GetLinearPixels(0, 3, 5, row.data()), 1);
    for (int x = 0; x < 5; ++x) {
        EXPECT_EQ(row[static_cast<std::size_t>(x)].g, ImageSample(x, 3, 1));
    }
}

// Aborting

TEST_F(Apply, AnAbortedFrameIsNotMade) {
    const auto frame = Image(2, 2);
    RecordingCallback callback;
    callback.abort = TRUE;
    Begin();
    effect->Apply(0, frame.get(), &context, &callback);
    EXPECT_FALSE(Exists("frame.psd"));
    EXPECT_EQ(callback.checks, 1);
    EXPECT_THAT(callback.progress, IsEmpty());
}

TEST_F(Apply, VRaysAbortIsCheckedAgainWithTheHost) {
    const auto frame = Image(2, 2);
    RecordingCallback callback;
    callback.abort = TRUE;
    UseRenderer(VRAY_CLASS_ID);
    Begin();
    Render().aborted = true;
    effect->Apply(0, frame.get(), &context, &callback);
    EXPECT_FALSE(Exists("frame.psd"));
    Render().aborted = false;
    effect->Apply(0, frame.get(), nullptr, &callback);
    EXPECT_FALSE(Exists("frame.psd"));
    EXPECT_THAT(callback.progress, IsEmpty()) << "without a context there is no exception";
    effect->Apply(0, frame.get(), &context, &callback);
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(Apply, TheExceptionIsForTheContextsRendererNotTheCurrentOne) {
    const auto frame = Image(2, 2);
    RecordingCallback callback;
    callback.abort = TRUE;
    UseRenderer(VRAY_CLASS_ID);
    const host::Owned<host::HostRenderer> other(new host::HostRenderer(scanline));
    frameRenderer = other.get();
    Begin();
    effect->Apply(0, frame.get(), &context, &callback);
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(Apply, AHostsAbortAloneDoesntStopAFrameThatIsThere) {
    const auto frame = Image(2, 2);
    RecordingCallback callback;
    Begin();
    Render().aborted = true;
    effect->Apply(0, frame.get(), &context, &callback);
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(Apply, NeedsNoCallback) {
    const auto frame = Image(2, 2);
    Begin();
    effect->Apply(0, frame.get(), &context, nullptr);
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(Apply, WithoutAContextNothingIsMadeButTheStartOfProgress) {
    const auto frame = Image(2, 2);
    RecordingCallback callback;
    Begin();
    effect->Apply(0, frame.get(), nullptr, &callback);
    EXPECT_FALSE(Exists("frame.psd"));
    EXPECT_THAT(callback.progress, ElementsAre(Pair(0, 1)));
}

TEST_F(Apply, OfARenderThatIsntSavedTellsOnlyTheStartOfProgress) {
    const auto frame = Image(2, 2);
    RecordingCallback callback;
    Render().preview = true;
    Begin();
    effect->Apply(0, frame.get(), &context, &callback);
    EXPECT_FALSE(Exists("frame.psd"));
    EXPECT_THAT(callback.progress, ElementsAre(Pair(0, 1)));
}

TEST_F(Apply, ProgressCountsChannelsOfTheLayersAndOfTheMergedImage) {
    const auto frame = Image(2, 2);
    RecordingCallback callback;
    RenderFrame(frame.get(), &callback);
    // Red, green, blue, alpha and mask of one layer; red, green, blue and alpha of the merged
    // image.
    ASSERT_GE(callback.progress.size(), 12U);
    EXPECT_EQ(callback.progress.front(), std::pair(0, 1));
    EXPECT_EQ(callback.progress.back(), std::pair(9, 9));
    for (std::size_t i = 2; i < callback.progress.size(); ++i) {
        EXPECT_GE(callback.progress[i].first, callback.progress[i - 1].first);
    }
    EXPECT_EQ(effect::psdChannelsDone, 9);
}

// Size

TEST_F(Apply, ASizeWithoutABitmapIsTheContexts) {
    context.devWidth = 7;
    context.devHeight = 3;
    context.devAspect = 2.0F;
    const WalkedDocument document = Save(nullptr);
    EXPECT_EQ(document.width, 7);
    EXPECT_EQ(document.height, 3);
    EXPECT_THAT(document.layers, IsEmpty());
    ASSERT_EQ(document.imageChannels.size(), 3U);
    EXPECT_EQ(document.imageChannels[0], std::string(7 * 3 * 2, '\0')) << "a black picture";
    EXPECT_EQ(Resource(document, 1064), std::string("\0\0\0\1\x40\0\0\0\0\0\0\0", 12));
}

struct FrameWithoutStorage : Bitmap {
    BitmapStorage* Storage() override { return nullptr; }
    void DeleteThis() override {}
};

TEST_F(Apply, ASizeOfABitmapWithoutStorageIs0) {
    context.devWidth = 7;
    context.devHeight = 3;
    FrameWithoutStorage bitmap;
    const WalkedDocument document = Save(&bitmap);
    EXPECT_EQ(document.width, 0);
    EXPECT_EQ(document.height, 0);
    EXPECT_EQ(Resource(document, 1064), std::string("\0\0\0\1\0\0\0\0\0\0\0\0", 12));
}

TEST_F(Apply, TheBitmapsAspectGoesIntoTheDocument) {
    const auto frame = Image(2, 2, true, 1.5F);
    // 1.5 as a double: 3F F8 and zeros.
    EXPECT_EQ(Resource(Save(frame.get()), 1064), std::string("\0\0\0\1\x3F\xF8\0\0\0\0\0\0", 12));
}

TEST_F(Apply, TheResolutionGoesIntoTheDocumentAndIsKeptInItsRange) {
    const auto frame = Image(2, 2);
    const auto expect = [](const std::string& fixed) {
        const std::string units("\0\1\0\2", 4);
        return fixed + units + fixed + units;
    };
    EXPECT_EQ(Resource(Save(frame.get()), 1005), expect(std::string("\0\x48\0\0", 4)));
    std::filesystem::remove(File("frame.psd"));
    effect->pblock->SetValue("resolution"_param, 0, 300.5F);
    EXPECT_EQ(Resource(Save(frame.get()), 1005), expect(std::string("\x01\x2C\x80\0", 4)));
    std::filesystem::remove(File("frame.psd"));
    effect->pblock->SetValue("resolution"_param, 0, 0.25F);
    EXPECT_EQ(Resource(Save(frame.get()), 1005), expect(std::string("\0\1\0\0", 4)));
}

// Format

TEST_F(Apply, ANameInPSBInAnyCaseMakesALargeDocument) {
    const auto frame = Image(2, 2);
    for (const char* name : {"a.psb", "b.PSB", "c.pSb"}) {
        SetFilename(File(name));
        RenderFrame(frame.get());
        const WalkedDocument document = Saved(name, true);
        EXPECT_TRUE(document.psb) << name;
        EXPECT_EQ(document.layers.size(), 1U);
    }
}

TEST_F(Apply, ANameOfItsOwnDecidesWhateverTheFormatOfTheOthersIs) {
    const auto frame = Image(2, 2);
    Set("fileFormat"_param, 1);
    SetFilename(File("a.psd"));
    RenderFrame(frame.get());
    EXPECT_FALSE(Saved("a.psd").psb);
    Set("fileFormat"_param, 0);
    SetFilename(File("a.PSB"));
    RenderFrame(frame.get());
    EXPECT_TRUE(Saved("a.PSB", true).psb);
}

TEST_F(Apply, OtherNamesMakeASmallDocument) {
    const auto frame = Image(2, 2);
    for (const char* name : {"psb", "a.psbx", "a.ps", "b"}) {
        SetFilename(File(name));
        RenderFrame(frame.get());
        EXPECT_FALSE(Saved(name).psb) << name;
    }
}

TEST_F(Apply, TheChosenFormatNamesTheFile) {
    const auto frame = Image(2, 2);
    Set("fileFormat"_param, 1);
    RenderFrame(frame.get());
    EXPECT_TRUE(Saved("frame.psb", true).psb);
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(Apply, ASideAbove30000MakesALargeDocumentUnderTheSameNameWithoutAWord) {
    for (const auto& [width, height, psb] :
         {std::tuple{30000, 1, false}, {30001, 1, true}, {1, 30000, false}, {1, 30001, true}}) {
        const auto frame = Image(width, height);
        RenderFrame(frame.get());
        const WalkedDocument document = Saved("frame.psd", psb);
        EXPECT_EQ(document.psb, psb) << width << " x " << height;
        EXPECT_EQ(document.width, width);
        EXPECT_EQ(document.height, height);
        EXPECT_THAT(TakeLog(), IsEmpty());
        std::filesystem::remove(File("frame.psd"));
    }
}

TEST_F(Apply, CompressionFitsTheDepth) {
    const auto frame = Image(4, 2);
    const struct {
        int bitDepth;
        int compression;
        int layerCode;
        int mergedCode;
    } rows[] = {{8, 0, 0, 0},  {8, 1, 1, 1},  {8, 2, 1, 1},  {8, -1, 1, 1}, {16, 0, 0, 0},
                {16, 1, 2, 1}, {16, 3, 2, 1}, {32, 0, 0, 0}, {32, 1, 3, 0}, {32, 7, 3, 0}};
    for (const auto& row : rows) {
        Set("bitDepth"_param, row.bitDepth);
        Set("compression"_param, row.compression);
        const WalkedDocument document = Save(frame.get());
        std::filesystem::remove(File("frame.psd"));
        EXPECT_EQ(document.depth, row.bitDepth);
        ASSERT_EQ(document.layers.size(), 1U);
        EXPECT_EQ(document.layers[0].channels[1].compression, row.layerCode)
            << row.bitDepth << " bits, compression " << row.compression;
        EXPECT_EQ(document.imageCompression, row.mergedCode);
        EXPECT_EQ(document.layersInTaggedBlock, row.bitDepth != 8);
    }
}

TEST_F(Apply, ADepthThatNoDocumentHasCountsAs16) {
    const auto frame = Image(4, 2);
    Set("bitDepth"_param, 16);
    RenderFrame(frame.get());
    const std::string of16Bits = FileBytes(File("frame.psd"));
    for (const int bitDepth : {0, 1, 7, 24, 64, -8, 256 + 8, 256 + 32}) {
        Set("bitDepth"_param, bitDepth);
        std::filesystem::remove(File("frame.psd"));
        RenderFrame(frame.get());
        EXPECT_EQ(FileBytes(File("frame.psd")), of16Bits) << bitDepth;
    }
}

TEST_F(Apply, WithoutItsBlockNothingIsMade) {
    Begin();
    effect->DeleteReference(0);
    const auto frame = Image(2, 2);
    effect->Apply(time, frame.get(), &context, nullptr);
    effect->RenderEnd(time);
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(Apply, PixelsAreThoseOfTheBitmapAtEachDepth) {
    const auto frame = Image(4, 2);
    for (const bool psb : {false, true}) {
        Set("fileFormat"_param, psb);
        const char* name = psb ? "frame.psb" : "frame.psd";
        Set("bitDepth"_param, 8);
        RenderFrame(frame.get());
        EXPECT_EQ(Sample(Saved(name, psb).layers[0].channels[1].pixels, 1, 4, 3, 1),
                  ImageSample(3, 1, 0) >> 8);
        std::filesystem::remove(File(name));
        Set("bitDepth"_param, 32);
        RenderFrame(frame.get());
        const std::uint32_t bits = static_cast<std::uint32_t>(
            Sample(Saved(name, psb).layers[0].channels[2].pixels, 4, 4, 3, 1));
        float value = 0.0F;
        std::memcpy(&value, &bits, sizeof value);
        EXPECT_FLOAT_EQ(value, static_cast<float>(ImageSample(3, 1, 1)) / 65535.0F);
        std::filesystem::remove(File(name));
    }
}

TEST_F(Apply, CompatibilityDecidesOnTheMergedImage) {
    const auto frame = Image(4, 2);
    const struct {
        int compatibility;
        char realMerged;
        int channels;
        int mergedCode;
    } rows[] = {{0, 0, 3, 1}, {1, 1, 4, 1}, {2, 1, 4, 0}};
    for (const auto& row : rows) {
        Set("compatibility"_param, row.compatibility);
        const WalkedDocument document = Save(frame.get());
        std::filesystem::remove(File("frame.psd"));
        EXPECT_EQ(Resource(document, 1057).substr(0, 5),
                  std::string("\0\0\0\1", 4) + row.realMerged);
        EXPECT_EQ(document.channelCount, row.channels) << row.compatibility;
        EXPECT_EQ(document.mergedTransparency, row.channels == 4);
        EXPECT_EQ(document.imageCompression, row.mergedCode)
            << "the highest keeps run lengths out of the merged image of 16 bits";
        if (row.compatibility == 0) {
            for (const std::string& channel : document.imageChannels) {
                EXPECT_EQ(channel, std::string(4 * 2 * 2, '\xFF')) << "a white page";
            }
        }
    }
}

TEST_F(Apply, ADocumentWithoutTheRenderLayerStillHasItsMergedImage) {
    const auto frame = Image(4, 2);
    Set("createRenderOutputLayer"_param, FALSE);
    const WalkedDocument document = Save(frame.get());
    EXPECT_THAT(document.layers, IsEmpty());
    ASSERT_EQ(document.imageChannels.size(), 4U);
    EXPECT_EQ(Sample(document.imageChannels[2], 2, 4, 1, 1), ImageSample(1, 1, 2));
}

// Renderer classes A and B

TEST_F(Apply, FieldsOfRendererClassAAreNotSaved) {
    UseRenderer(RENDERER_A_CLASS_ID);
    const auto frame = Image(2, 2);
    RecordingCallback callback;
    context.fieldRender = TRUE;
    context.evenLines = TRUE;
    RenderFrame(frame.get(), &callback);
    EXPECT_FALSE(Exists("frame.psd"));
    EXPECT_THAT(callback.progress, ElementsAre(Pair(0, 1)));
}

TEST_F(Apply, OneFieldFlagAloneIsSaved) {
    UseRenderer(RENDERER_A_CLASS_ID);
    const auto frame = Image(2, 2);
    context.fieldRender = TRUE;
    RenderFrame(frame.get());
    EXPECT_TRUE(Exists("frame.psd"));
    std::filesystem::remove(File("frame.psd"));
    context.fieldRender = FALSE;
    context.evenLines = TRUE;
    RenderFrame(frame.get());
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(Apply, FieldsOfOtherRenderersAreSaved) {
    context.fieldRender = TRUE;
    context.evenLines = TRUE;
    const auto frame = Image(2, 2);
    RenderFrame(frame.get());
    EXPECT_TRUE(Exists("frame.psd"));
}

// Sees which renderer the context names while the document is written.
class RendererWatch : public RecordingCallback {
  public:
    explicit RendererWatch(const RenderGlobalContext& watched) : gc(watched) {}
    BOOL Progress(int done, int total) override {
        seen.push_back(gc.renderer);
        return RecordingCallback::Progress(done, total);
    }

    const RenderGlobalContext& gc;
    std::vector<Renderer*> seen;
};

class RendererSwap : public Apply {
  protected:
    RendererSwap() : classA(new host::HostRenderer(RENDERER_A_CLASS_ID)) {
        UseRenderer(RENDERER_B_CLASS_ID);
        frameRenderer = classA.get();
    }

    // Whom the context named at the start, in the middle and afterwards.
    void ExpectSwapped(bool swapped) {
        Renderer* current = Host().renderer.get();
        RendererWatch watch(context);
        const auto frame = Image(2, 2);
        Begin();
        effect->Apply(0, frame.get(), &context, &watch);
        ASSERT_GT(watch.seen.size(), 2U);
        EXPECT_EQ(watch.seen.front(), frameRenderer) << "before the swap";
        EXPECT_EQ(watch.seen[1], swapped ? current : frameRenderer);
        EXPECT_EQ(watch.seen.back(), swapped ? current : frameRenderer);
        EXPECT_EQ(context.renderer, frameRenderer) << "taken back";
    }

    host::Owned<host::HostRenderer> classA;
};

TEST_F(RendererSwap, ClassBStandsInForClassAAndGoesAgain) {
    ExpectSwapped(true);
}

TEST_F(RendererSwap, ClassBStandsInForClassAAlone) {
    const host::Owned<host::HostRenderer> other(new host::HostRenderer(scanline));
    frameRenderer = other.get();
    ExpectSwapped(false);
}

TEST_F(RendererSwap, OtherCurrentRenderersDontStandIn) {
    UseRenderer(scanline);
    ExpectSwapped(false);
}

TEST_F(RendererSwap, FieldsAreSavedUnderClassB) {
    context.fieldRender = TRUE;
    context.evenLines = TRUE;
    ExpectSwapped(true);
    EXPECT_TRUE(Exists("frame.psd"));
}

TEST_F(RendererSwap, GoesAgainWhereTheNameIsNone) {
    Begin();
    Render().output.SetName(MSTR());
    effect->Apply(0, nullptr, &context, nullptr);
    EXPECT_EQ(context.renderer, classA.get());
}

TEST_F(RendererSwap, GoesAgainWhereTheFileCantBeOpened) {
    Begin();
    Render().output.SetName(Text(File("missing") / "frame.exr"));
    effect->Apply(0, nullptr, &context, nullptr);
    EXPECT_EQ(context.renderer, classA.get());
    EXPECT_EQ(TakeLog().size(), 1U);
    EXPECT_EQ(TakeBoxes().size(), 1U);
}

TEST_F(RendererSwap, GoesAgainWhereFieldsArentSaved) {
    UseRenderer(RENDERER_A_CLASS_ID);
    frameRenderer = Host().renderer.get();
    context.fieldRender = TRUE;
    context.evenLines = TRUE;
    Begin();
    effect->Apply(0, nullptr, &context, nullptr);
    EXPECT_EQ(context.renderer, frameRenderer);
    EXPECT_FALSE(Exists("frame.psd"));
}

// Failures

TEST_F(Apply, AFileThatCantBeOpenedIsToldAndTheNextFrameTriesAgain) {
    const auto frame = Image(2, 2);
    SetFilename(File("missing") / "frame.psd");
    const std::string text =
        "Could not open/create " + (File("missing") / "frame.psd").string() + ".";
    effect->RenderBegin(0, 0);
    RenderStartedFrame(frame.get());
    EXPECT_THAT(TakeLog(), ElementsAre(ErrorWithDialog(text)));
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(text)));
    Host().settings.quiet = true;
    RenderStartedFrame(frame.get());
    EXPECT_THAT(TakeLog(), ElementsAre(ErrorWithDialog(text)));
    Host().settings.quiet = false;
    std::filesystem::create_directory(File("missing"));
    RenderStartedFrame(frame.get());
    EXPECT_TRUE(std::filesystem::exists(File("missing") / "frame.psd"));
    effect->RenderEnd(0);
}

#ifndef _WIN32
// Windows knows no folder that forbids its own files by a flag.
TEST_F(Apply, AFolderThatForbidsFilesIsToldAsAFileThatCantBeOpened) {
#ifndef _WIN32
    if (geteuid() == 0) GTEST_SKIP() << "the superuser may write everywhere";
#endif
    std::filesystem::create_directory(File("locked"));
    std::filesystem::permissions(
        File("locked"), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    SetFilename(File("locked") / "frame.psd");
    const auto frame = Image(2, 2);
    RenderFrame(frame.get());
    std::filesystem::permissions(File("locked"), std::filesystem::perms::owner_all);
    const std::string text =
        "Could not open/create " + (File("locked") / "frame.psd").string() + ".";
    EXPECT_THAT(TakeLog(), ElementsAre(ErrorWithDialog(text)));
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(text)));
}
#endif

TEST_F(Apply, ANameThatIsNoneAnyMoreMakesNothing) {
    const auto frame = Image(2, 2);
    Begin();
    Render().output.SetName(MSTR());
    effect->Apply(0, frame.get(), &context, nullptr);
    EXPECT_THAT(TakeLog(), IsEmpty());
    EXPECT_FALSE(Exists("frame.psd"));
}

#ifndef _WIN32

TEST_F(Apply, AFullDiskIsTold) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "there is no /dev/full here";
    SetFilename("/dev/full");
    answer = IDYES;
    const auto frame = Image(2, 2);
    RenderFrame(frame.get());
    EXPECT_THAT(TakeLog(), ElementsAre(ErrorWithDialog("Error writing to /dev/full.")));
    EXPECT_THAT(TakeBoxes(), ElementsAre(QuestionBoxWithTick("Confirm overwriting:\n\n/dev/full ?"),
                                         OkBox("Error writing to /dev/full.")));
}

// For its lifetime no file of the process grows beyond a size.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit limit = before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
        handler = std::signal(SIGXFSZ, SIG_IGN);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        std::signal(SIGXFSZ, handler);
        setrlimit(RLIMIT_FSIZE, &before);
    }

  private:
    rlimit before{};
    void (*handler)(int) = nullptr;
};

TEST_F(Apply, AWriteThatFailsHalfwayIsToldAndTheFileStaysAsFarAsItGot) {
    // More than the buffer of the file, so that a write in the middle fails.
    const auto frame = Image(600, 500);
    Set("compression"_param, 0);
    {
        const FileSizeLimit limit(1 << 20);
        RenderFrame(frame.get());
    }
    const std::string text = "Error writing to " + File("frame.psd").string() + ".";
    EXPECT_THAT(TakeLog(), ElementsAre(ErrorWithDialog(text)));
    EXPECT_THAT(TakeBoxes(), ElementsAre(OkBox(text)));
    EXPECT_EQ(std::filesystem::file_size(File("frame.psd")), std::uintmax_t{1} << 20);
    EXPECT_EQ(FileBytes(File("frame.psd")).substr(0, 4), "8BPS");
}

TEST_F(Apply, AWriteThatFailsAtTheVeryEndIsTold) {
    const auto frame = Image(20, 10);
    {
        const FileSizeLimit limit(100);
        RenderFrame(frame.get());
    }
    EXPECT_EQ(TakeLog().size(), 1U);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_EQ(std::filesystem::file_size(File("frame.psd")), 100U);
}

#endif

// State

TEST_F(Apply, TheBoundsOfIDsAreThoseOfTheLastFrame) {
    sources::nodeIDBounds[1] += IPoint2{1, 1};
    const auto frame = Image(2, 2);
    RenderFrame(frame.get());
    EXPECT_THAT(sources::nodeIDBounds, IsEmpty());
}

TEST_F(Apply, GammaOfTheHostGoesIntoTheMergedImage) {
    gammaMgr.enable = TRUE;
    gammaMgr.SetFileOutGamma(2.2F);
    const auto frame = Image(2, 2);
    const WalkedDocument document = Save(frame.get());
    EXPECT_EQ(Sample(document.imageChannels[0], 2, 2, 1, 1),
              gammaMgr.fileOutGammaTable[ImageSample(1, 1, 0) >> 3]);
    EXPECT_EQ(Sample(document.imageChannels[3], 2, 2, 1, 1), ImageSample(1, 1, 3)) << "not alpha";
    EXPECT_EQ(Sample(document.layers[0].channels[1].pixels, 2, 2, 1, 1), ImageSample(1, 1, 0))
        << "an adjustment layer corrects the layers";
    std::filesystem::remove(File("frame.psd"));
    Set("gammaCorrectConfig"_param, 0);
    EXPECT_EQ(Sample(Save(frame.get()).layers[0].channels[1].pixels, 2, 2, 1, 1),
              gammaMgr.fileOutGammaTable[ImageSample(1, 1, 0) >> 3]);
}

// A frame of V-Ray's, of which the host has a copy.
class ApplyVRay : public Apply {
  protected:
    ApplyVRay() {
        host::HostRenderer& renderer = UseRenderer(VRAY_CLASS_ID);
        UseVRayFrameBuffer(renderer, vray);
        Render().saveFile = TRUE;
        // Asks nothing before a file is written anew.
        Host().settings.quiet = true;
    }
    // The layer's red channel and the merged image's, at (2, 1).
    std::pair<int, int> Reds() {
        const WalkedDocument document = Save(frame.get());
        EXPECT_EQ(document.layers.size(), 1U);
        EXPECT_EQ(document.layers[0].channels[1].id, 0);
        return {Sample(document.layers[0].channels[1].pixels, 2, 3, 2, 1),
                Sample(document.imageChannels[0], 2, 3, 2, 1)};
    }

    std::shared_ptr<host::VRayFrameBuffer> vray = VRayFrame(3, 2);
    host::Owned<host::ImageBitmap> frame = Image(3, 2);
};

TEST_F(ApplyVRay, TakesThePixelsFromItsFrameBuffer) {
    const WalkedDocument document = Save(frame.get());
    ASSERT_EQ(document.layers.size(), 1U);
    const WalkedLayer& layer = document.layers[0];
    EXPECT_EQ(layer.name, "Render");
    ASSERT_EQ(layer.channels.size(), 5U);
    ASSERT_EQ(document.imageChannels.size(), 4U);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x) {
            for (int component = 0; component < 3; ++component) {
                const auto index = static_cast<std::size_t>(component);
                EXPECT_EQ(layer.channels[index + 1].id, component);
                EXPECT_EQ(Sample(layer.channels[index + 1].pixels, 2, 3, x, y),
                          VRaySample(x, y, component));
                EXPECT_EQ(Sample(document.imageChannels[index], 2, 3, x, y),
                          VRaySample(x, y, component));
            }
            EXPECT_EQ(Sample(layer.channels[4].pixels, 2, 3, x, y), VRaySample(x, y, 3));
            EXPECT_EQ(Sample(document.imageChannels[3], 2, 3, x, y), VRayAlphaSample(x, y));
        }
    }
}

TEST_F(ApplyVRay, TakesThePixelsFromTheBitmapWithItsFrameBufferOff) {
    Host().renderer->GetParamBlock(15)->SetValue(170, 0, 0);
    EXPECT_EQ(Reds(), std::pair(ImageSample(2, 1, 0) + 0, ImageSample(2, 1, 0) + 0));
}

TEST_F(ApplyVRay, TakesThePixelsFromTheBitmapWhenItsFrameBufferHasAnotherSize) {
    for (const auto& [width, height] : {std::pair(2, 2), std::pair(4, 2), std::pair(3, 3)}) {
        UseVRayFrameBuffer(static_cast<host::HostRenderer&>(*Host().renderer),
                           VRayFrame(width, height));
        EXPECT_EQ(Reds(), std::pair(ImageSample(2, 1, 0) + 0, ImageSample(2, 1, 0) + 0));
    }
}

TEST_F(ApplyVRay, TakesThePixelsFromTheFrameBufferOfTheFramesOwnRenderer) {
    const host::Owned<host::HostRenderer> other(new host::HostRenderer(scanline));
    frameRenderer = other.get();
    EXPECT_EQ(Reds(), std::pair(ImageSample(2, 1, 0) + 0, ImageSample(2, 1, 0) + 0));
}

TEST_F(ApplyVRay, NeedsNoBitmap) {
    context.devWidth = 3;
    context.devHeight = 2;
    const WalkedDocument document = Save(nullptr);
    ASSERT_EQ(document.layers.size(), 1U);
    EXPECT_EQ(Sample(document.layers[0].channels[1].pixels, 2, 3, 2, 1), VRaySample(2, 1, 0));
}

// V-Ray's frame buffer with a look that makes all reds 0, and its corrections as a user set them.
class ApplyLook : public ApplyVRay {
  protected:
    ApplyLook() {
        gammaMgr.enable = TRUE;
        gammaMgr.SetFileOutGamma(2.2F);
        std::filesystem::create_directories(folder.path / "temporary");
        host::UseTemporaryFolder(Text(folder.path / "temporary"));
        SetLook("LUT_3D_SIZE 2\n0 0 0\n0 0 0\n0 1 0\n0 1 0\n0 0 1\n0 0 1\n0 1 1\n0 1 1\n");
    }
    ~ApplyLook() override {
        ExpectUsersValues();
        EXPECT_FALSE(Exists("temporary/psd_tmp.cube"));
    }

    void ExpectUsersValues() {
        for (int i = 0; i < VRAY_COLOR_CORRECTIONS; ++i)
            EXPECT_EQ(vray->GetValue(i), static_cast<float>(i) + 0.5F) << "correction " << i;
    }

    // `table` is what the frame buffer writes.
    void SetLook(std::string table, bool succeeds = true) {
        SetLook({[](BMM_Color_fl* pixels, int count) {
                     for (int i = 0; i < count; ++i)
                         pixels[i].r = 0.0F;
                 },
                 [table = std::move(table), succeeds](std::ostream& out) {
                     out << table;
                     return succeeds;
                 }});
    }
    void SetLook(host::VRayLook look) {
        vray->SetLook(std::move(look));
        for (int i = 0; i < VRAY_COLOR_CORRECTIONS; ++i)
            vray->SetValue(i, static_cast<float>(i) + 0.5F);
    }
    // Names of the layers from the top, and the picture's red.
    std::pair<std::string, int> NamesAndRed() {
        const WalkedDocument document = Save(frame.get());
        std::string names;
        for (const WalkedLayer& layer : document.layers)
            names = layer.name + (names.empty() ? "" : " | ") + names;
        return {names, Sample(document.layers.at(0).channels.at(1).pixels, 2, 3, 2, 1)};
    }
    void ExpectInThePixels(const std::string& why) {
        EXPECT_EQ(NamesAndRed(), std::pair(std::string("Gamma Correction (2.2) | Render"), 0))
            << why;
    }
};

TEST_F(ApplyLook, BecomesALayerBelowTheGammaAndLeavesThePixels) {
    EXPECT_EQ(NamesAndRed(),
              std::pair(std::string("Gamma Correction (2.2) | Color Corrections | Render"),
                        VRaySample(2, 1, 0) + 0));
}

TEST_F(ApplyLook, StandsAboveGroupsAtPosition0) {
    Set("customLayerSet1"_param, TRUE);
    EXPECT_EQ(NamesAndRed().first,
              "Gamma Correction (2.2) | Color Corrections | Layer Set 1 | </Layer set> | Render");
}

TEST_F(ApplyLook, IsInNoPixelsOfTheMergedImageThen) {
    const WalkedDocument document = Save(frame.get());
    EXPECT_EQ(Sample(document.imageChannels.at(0), 2, 3, 2, 1),
              gammaMgr.fileOutGammaTable[VRaySample(2, 1, 0) >> 3]);
}

TEST_F(ApplyLook, IsInThePixelsByTheOtherSettings) {
    for (const int config : {0, 1, 2}) {
        Set("colorCorrectConfig"_param, config);
        ExpectInThePixels("colorCorrectConfig " + std::to_string(config));
    }
}

TEST_F(ApplyLook, IsNowhereWhenTheUserWantsNoCorrections) {
    Set("vrayColorCorrections"_param, FALSE);
    EXPECT_EQ(NamesAndRed(),
              std::pair(std::string("Gamma Correction (2.2) | Render"), VRaySample(2, 1, 0) + 0));
}

// The values of V-Ray's corrections whenever a save tells how far it is.
class CorrectionsWatch : public RecordingCallback {
  public:
    explicit CorrectionsWatch(IVRayColorCorrections& watched) : corrections(watched) {}
    BOOL Progress(int done, int total) override {
        std::vector<float> values;
        for (int i = 0; i < VRAY_COLOR_CORRECTIONS; ++i)
            values.push_back(corrections.GetValue(i));
        seen.push_back(std::move(values));
        return RecordingCallback::Progress(done, total);
    }

    std::vector<std::vector<float>> seen;

  private:
    IVRayColorCorrections& corrections;
};

TEST_F(ApplyLook, HasNoLayerAndKeepsAllValuesWhenNoneOfTheSwitchesIsOn) {
    constexpr int switches[] = {3, 4, 5, 16, 17, 18};
    for (const int i : switches)
        vray->SetValue(i, 0.9F);
    CorrectionsWatch watch(*vray);
    watch.Progress(0, 0);
    RenderFrame(frame.get(), &watch);
    ASSERT_GT(watch.seen.size(), 3U);
    EXPECT_THAT(watch.seen, testing::Each(watch.seen.front()));
    ASSERT_EQ(Saved().layers.size(), 2U);
    EXPECT_EQ(Saved().layers[1].name, "Gamma Correction (2.2)");
    for (const int i : switches)
        vray->SetValue(i, static_cast<float>(i) + 0.5F);
}

TEST_F(ApplyLook, IsOffWhileTheDocumentIsWrittenOnceALayerHasIt) {
    CorrectionsWatch watch(*vray);
    RenderFrame(frame.get(), &watch);
    ASSERT_GT(watch.seen.size(), 2U);
    EXPECT_THAT(watch.seen.back(), testing::Each(0.0F));
}

TEST_F(ApplyLook, StaysInThePixelsWhicheverStepToTheLayerFails) {
    host::UseTemporaryFolder(Text(File("nowhere")));
    ExpectInThePixels("no folder for the table");
    host::UseTemporaryFolder(Text(File("temporary")));
    SetLook("LUT_3D_SIZE 2\n0 0 0\n");
    ExpectInThePixels("a table that ends too soon");
    SetLook("", false);
    ExpectInThePixels("a script that says false");
}

// Stops a save in the middle of the document.
class ThrowingCallback : public RecordingCallback {
  public:
    explicit ThrowingCallback(std::function<void()> thrower) : throwIt(std::move(thrower)) {}
    BOOL Progress(int done, int total) override {
        RecordingCallback::Progress(done, total);
        if (progress.size() > 2) throwIt();
        return FALSE;
    }

  private:
    std::function<void()> throwIt;
};

TEST_F(ApplyLook, ComesBackWhenMemoryRanOut) {
    for (const bool becomesALayer : {true, false}) {
        Set("vrayColorCorrections"_param, becomesALayer);
        ThrowingCallback callback([this] {
            EXPECT_EQ(vray->GetValue(17), 0.0F) << "it was off";
            throw std::bad_alloc();
        });
        RenderFrame(frame.get(), &callback);
        const std::vector<LogLine> log = TakeLog();
        ASSERT_EQ(log.size(), 1U);
        EXPECT_EQ(log[0].text, "Not enough memory to write " + File("frame.psd").string() + ".");
        ExpectUsersValues();
    }
}

TEST_F(ApplyLook, ComesBackWhereTheHostThrows) {
    Set("vrayColorCorrections"_param, FALSE);
    ThrowingCallback callback([] { throw std::runtime_error("the host's own"); });
    Begin();
    EXPECT_THROW(effect->Apply(time, frame.get(), &context, &callback), std::runtime_error);
}

TEST_F(ApplyLook, ComesBackWhereTheNameIsNoneAnyMore) {
    SetFilename(File("frame.psd"));
    Set("vrayColorCorrections"_param, FALSE);
    Begin();
    SetText("filename"_param, MSTR());
    effect->Apply(time, frame.get(), &context, nullptr);
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(ApplyLook, ComesBackWhereTheFileCantBeOpened) {
    SetFilename(File("none") / "frame.psd");
    Set("vrayColorCorrections"_param, FALSE);
    Begin();
    effect->Apply(time, frame.get(), &context, nullptr);
    EXPECT_THAT(TakeLog(), testing::SizeIs(1));
}

TEST_F(ApplyLook, ComesBackAfterAnAbort) {
    RecordingCallback callback;
    callback.abort = TRUE;
    Render().aborted = true;
    Begin();
    effect->Apply(time, frame.get(), &context, &callback);
    EXPECT_FALSE(Exists("frame.psd"));
}

TEST_F(ApplyLook, At32BitsNeedsNoGamma) {
    Set("bitDepth"_param, 32);
    const WalkedDocument document = Save(frame.get());
    ASSERT_EQ(document.layers.size(), 2U);
    EXPECT_EQ(document.layers[1].name, "Color Corrections");
}

TEST_F(Apply, VRaysFrameBufferIsMadeReadyAfterTheCorrectionsThatNobodyWantsWereSwitchedOff) {
    PreparedFrame frameBuffer;
    frameBuffer.values.fill(0.5F);
    const host::Owned<OtherVRay> vray(new OtherVRay(frameBuffer));
    frameRenderer = vray.get();
    const auto frame = Image(3, 2);
    Set("vrayColorCorrections"_param, FALSE);
    RenderFrame(frame.get());
    EXPECT_EQ(frameBuffer.prepared, 1);
    EXPECT_THAT(frameBuffer.valuesWhenPrepared, testing::Each(0.0F));
    EXPECT_THAT(frameBuffer.values, testing::Each(0.5F));
}

TEST_F(Apply, WithoutGammaHasNoLayerOfItWhateverTheSettingSays) {
    const auto frame = Image(3, 2);
    for (const bool enabled : {false, true}) {
        gammaMgr.enable = enabled;
        gammaMgr.SetFileOutGamma(enabled ? 1.0F : 2.2F);
        for (const int config : {0, 1, 2, 3}) {
            Set("gammaCorrectConfig"_param, config);
            EXPECT_EQ(Save(frame.get()).layers.size(), 1U) << enabled << config;
            std::filesystem::remove(File("frame.psd"));
        }
    }
}

TEST_F(Apply, TheCamerasBlockIsOfTheFrameInHand) {
    const auto frame = Image(3, 2);
    for (const float x : {1.0F, 2.0F}) {
        context.camToWorld.SetRow(3, {x, 0.0F, 0.0F});
        const WalkedDocument document = Save(frame.get());
        std::filesystem::remove(File("frame.psd"));
        const std::string data = Resource(document, 58151);
        ASSERT_EQ(data.size(), 80U);
        // The double 1.0 begins with 3F F0, 2.0 with 40 00.
        EXPECT_EQ(data.substr(8, 2), x == 1.0F ? "\x3F\xF0" : std::string("\x40\0", 2));
        EXPECT_EQ(Resource(document, 58152), "absent");
        EXPECT_EQ(Resource(document, 30000), "absent");
    }
    Set("embedCameraInfo"_param, FALSE);
    EXPECT_EQ(Resource(Save(frame.get()), 58151), "absent");
}

TEST_F(Apply, TheCamerasBlocksAreOfTheFieldsOfTheFrameInHand) {
    const auto frame = Image(3, 2);
    Host().settings.quiet = true;
    context.fieldRender = TRUE;
    // The blocks of both fields, after the camera moved to `x`; the double 1.0 begins with 3F F0,
    // 2.0 with 40 00, 4.0 with 40 10.
    const auto blocks = [&](BOOL evenLines, float x) {
        context.evenLines = evenLines;
        context.camToWorld.SetRow(3, {x, 0.0F, 0.0F});
        RenderStartedFrame(frame.get());
        const WalkedDocument document = Saved();
        const auto place = [&document](int id) {
            const std::string data = Resource(document, id);
            return data == "absent" ? data : data.substr(8, 2);
        };
        return std::pair(place(58151), place(58152));
    };
    const std::string one = "\x3F\xF0";
    const std::string two("\x40\0", 2);
    const std::string four = "\x40\x10";
    effect->RenderBegin(time, 0);
    EXPECT_EQ(blocks(TRUE, 1.0F), std::pair(one, std::string("absent")));
    EXPECT_EQ(blocks(FALSE, 2.0F), std::pair(one, two));
    EXPECT_EQ(blocks(TRUE, 4.0F), std::pair(four, std::string("absent"))) << "of the next frame";
    effect->RenderEnd(time);
    effect->RenderBegin(time, 0);
    EXPECT_EQ(blocks(FALSE, 2.0F), std::pair(std::string("absent"), two)) << "of the next render";
    effect->RenderEnd(time);
}

TEST_F(Apply, TheCameraOfAFieldThatIsntSavedIsInTheFramesDocument) {
    UseRenderer(RENDERER_A_CLASS_ID);
    const auto frame = Image(3, 2);
    context.fieldRender = TRUE;
    context.evenLines = TRUE;
    effect->RenderBegin(time, 0);
    RenderStartedFrame(frame.get());
    EXPECT_FALSE(Exists("frame.psd"));
    context.evenLines = FALSE;
    RenderStartedFrame(frame.get());
    effect->RenderEnd(time);
    EXPECT_NE(Resource(Saved(), 58151), "absent");
    EXPECT_NE(Resource(Saved(), 58152), "absent");
}

TEST_F(Apply, PointHelpersHaveABlockEachIfTheUserWantsThem) {
    Host().scene.AddNode(_M("Null 1")).SetKind(host::NodeKind::PointHelper);
    Host().scene.AddNode(_M("Box"));
    Host().scene.AddNode(_M("null 2")).SetKind(host::NodeKind::PointHelper);
    Set("embedHelpersInfo"_param, TRUE);
    SetText("embedHelpersWildcard"_param, _M("NULL*"));
    const auto frame = Image(3, 2);
    const WalkedDocument document = Save(frame.get());
    std::vector<std::tuple<std::string, int, std::string>> own;
    for (const psdfile::WalkedResource& resource : document.resources) {
        if (resource.signature == "qzMk")
            own.emplace_back(resource.signature, resource.id, resource.name);
    }
    EXPECT_THAT(own, ElementsAre(std::tuple("qzMk", 58151, ""), std::tuple("qzMk", 30000, "Null 1"),
                                 std::tuple("qzMk", 30002, "null 2")));
}

TEST_F(Apply, TheShadowImageLivesUntilTheDocumentIsWritten) {
    WriteFile(File("shadow.png"), "an image");
    SetText("shadowPassSource"_param, Text(File("shadow.png")));
    Host().imageLoader = [](const std::string&) { return Image(3, 2); };
    const auto frame = Image(3, 2);
    const WalkedDocument document = Save(frame.get());
    ASSERT_EQ(document.layers.size(), 2U);
    EXPECT_EQ(document.layers[0].name, "Shadows");
    EXPECT_EQ(Sample(document.layers[0].channels.back().pixels, 2, 3, 2, 1), ImageSample(2, 1, 3));
}

TEST_F(Apply, DepthIsALayerAtItsPositionAndAChannelOfItsOwn) {
    const auto frame = Image(2, 1);
    auto fragments = std::make_unique<host::FragmentBuffer>(2, 1, BMM_CHAN_Z);
    fragments->AddPixel(std::array{host::Fragment{.z = 1.0F}});
    fragments->AddPixel(std::array{host::Fragment{.z = 5.0F}});
    frame->SetGBuffer(std::move(fragments));
    Set("depthLayer"_param, TRUE);
    Set("createZDepthChannel"_param, TRUE);
    const WalkedDocument document = Save(frame.get());
    ASSERT_EQ(document.layers.size(), 2U);
    EXPECT_EQ(document.layers[0].name, "Depth") << "below the render";
    EXPECT_EQ(document.layers[0].blocks.count("SoCo"), 1U);
    const std::string nearIsLight("\xFF\xFF\0\0", 4);
    EXPECT_EQ(document.layers[0].channels.back().id, -2) << "the mask";
    EXPECT_EQ(document.layers[0].channels.back().pixels, nearIsLight);
    ASSERT_EQ(document.imageChannels.size(), 5U);
    EXPECT_EQ(document.imageChannels[4], nearIsLight);
    std::filesystem::remove(File("frame.psd"));
    Set("depthLayer"_param, FALSE);
    Set("createZDepthChannel"_param, FALSE);
    EXPECT_EQ(Save(frame.get()).layers.size(), 1U);
    EXPECT_EQ(Saved().imageChannels.size(), 4U);
}

TEST_F(Apply, ACustomSetStaysUntilEmptySetsAreFiltered) {
    const auto frame = Image(2, 1);
    Set("customLayerSet3"_param, TRUE);
    const WalkedDocument document = Save(frame.get());
    std::filesystem::remove(File("frame.psd"));
    ASSERT_EQ(document.layers.size(), 3U);
    EXPECT_EQ(document.layers[2].name, "Layer Set 3");
    Set("filterEmptyLayerSets"_param, TRUE);
    EXPECT_EQ(Save(frame.get()).layers.size(), 1U);
}

class ApplyGroups : public MatteFrameTest {
  protected:
    ApplyGroups() {
        UseRenderer(scanline);
        Host().settings.quiet = true;
        Set("outputNodeIDs"_param, TRUE);
    }
    // Names of all records of the layers, from the top of the stack.
    std::string Layers(const char* file = "frame.psd") {
        RenderFrame(image.get());
        std::string text;
        for (const WalkedLayer& layer : WalkDocument(FileBytes(File(file)), false).layers)
            text = layer.name + (text.empty() ? "" : " | ") + text;
        return text;
    }
};

TEST_F(ApplyGroups, AreInTheDocument) {
    EXPECT_EQ(Layers(), "Render | Object IDs | Object ID: 1 | Name | Object ID: 7 | </Layer set>");
}

TEST_F(ApplyGroups, AnEmptySetGoesOnlyWhereTheUserWantsIt) {
    SetText("nodeIDList"_param, _M("abc"));
    EXPECT_EQ(Layers(), "Render | Object IDs | </Layer set>");
    Set("filterEmptyLayerSets"_param, TRUE);
    EXPECT_EQ(Layers(), "Render");
    SetText("nodeIDList"_param, _M("1"));
    EXPECT_EQ(Layers(), "Render | Object IDs | Object ID: 1 | </Layer set>");
}

TEST_F(ApplyGroups, AnEmptySetOfAnAnimationGoesOnlyWhereTheUserWantsItThereToo) {
    SetText("nodeIDList"_param, _M("abc"));
    Set("filterEmptyLayerSets"_param, TRUE);
    Render().timeType = REND_TIMERANGE;
    EXPECT_EQ(Layers("frame0000.psd"), "Render | Object IDs | </Layer set>");
    Set("filterEmptyLayersAndChannelsForAnimations"_param, TRUE);
    EXPECT_EQ(Layers("frame0000.psd"), "Render");
}

TEST_F(ApplyGroups, MattesAreOfTheFrameInHand) {
    RenderFrame(image.get());
    image = Image(width, height);
    auto fragments = std::make_unique<host::FragmentBuffer>(width, height, allChannels);
    for (int i = 0; i < width * height; ++i)
        fragments->AddPixel(std::array{Third(255)});
    image->SetGBuffer(std::move(fragments));
    EXPECT_EQ(Layers(), "Render | Object IDs | Object ID: 7 | </Layer set>");
}

}  // namespace
