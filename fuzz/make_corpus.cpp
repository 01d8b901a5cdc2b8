// Writes the files that fuzzing starts from: one of each kind that the readers know, small.
// Inputs that once made a target fail stand beside them, under names of their own, and stay.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/command/exr_samples.h"
#include "tests/command/image_samples.h"

namespace {

namespace fs = std::filesystem;
using exr_samples::Part;

class Corpus {
  public:
    Corpus(const fs::path& root, const std::string& target) : folder(root / target) {
        fs::create_directories(folder);
    }

    void Add(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }

  private:
    fs::path folder;
};

void WriteExr(const Corpus& corpus) {
    const auto add = [&](const std::string& name, const std::vector<Part>& parts) {
        corpus.Add(name + ".exr", exr_samples::Write(parts));
    };
    add("half", {Part{}});
    add("float_in_part", {Part{.channels = {{"R", Imf::FLOAT}, {"G"}, {"B"}}}});
    add("unsigned", {Part{.channels = {{"R", Imf::UINT}, {"G", Imf::UINT}, {"B", Imf::UINT}}}});
    add("grey", {Part{.channels = {{"Y"}, {"A"}}}});
    add("layers",
        {Part{
            .channels = {
                {"V.Combined.R"}, {"V.Combined.G"}, {"V.Combined.B"}, {"V.Depth.Z", Imf::FLOAT}}}});
    add("windows", {Part{.display = {-2, -3, 6, 7}, .data = {-5, 1, 3, 12}}});
    add("tiles",
        {Part{.display = {0, 0, 9, 9}, .data = {0, 0, 9, 9}, .tileSide = 4, .mipmaps = true}});
    add("subsampled", {Part{.channels = {{"R", Imf::HALF, 2}, {"G"}, {"B"}},
                            .display = {0, 0, 3, 3},
                            .data = {0, 0, 3, 3}}});
    add("parts", {Part{.channels = {{"Z", Imf::FLOAT}}, .name = "depth"},
                  Part{.tileSide = 8, .name = "beauty"}});
    Part deep{.channels = {{"R"},
                           {"G"},
                           {"B"},
                           {"A"},
                           {"Z", Imf::FLOAT},
                           {"ZBack", Imf::FLOAT},
                           {"objectID", Imf::UINT}},
              .display = {-1, 0, 3, 3},
              .data = {0, -1, 4, 3},
              .deep = true,
              .name = "deep",
              .sampleCount = [](int x, int y) { return (x + y + 1) % 4; },
              .deepValues =
                  [](const std::string& channel, int, int, int sample) {
                      if (channel == "Z") return 9.0 - sample;
                      if (channel == "ZBack") return 11.0 - sample;
                      return channel == "objectID" ? sample : 0.25 * sample;
                  }};
    add("deep", {deep});
    add("parts_with_deep", {Part{.display = deep.display, .name = "flat"}, deep});
    deep.compression = Imf::NO_COMPRESSION;
    add("deep_uncompressed", {deep});
    deep.tileSide = 2;
    deep.compression = Imf::RLE_COMPRESSION;
    add("deep_tiles", {deep});
    for (const auto& [name, compression] :
         {std::pair{"none", Imf::NO_COMPRESSION}, std::pair{"rle", Imf::RLE_COMPRESSION},
          std::pair{"zips", Imf::ZIPS_COMPRESSION}, std::pair{"piz", Imf::PIZ_COMPRESSION},
          std::pair{"pxr24", Imf::PXR24_COMPRESSION}, std::pair{"b44", Imf::B44_COMPRESSION},
          std::pair{"b44a", Imf::B44A_COMPRESSION}, std::pair{"dwaa", Imf::DWAA_COMPRESSION}}) {
        add(name, {Part{.compression = compression}});
    }
    Part seen;
    seen.matrices = {{"worldToCamera", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, -1, -3, -2, 1}},
                     {"worldToNDC", {1, 0, 0, 0, 0, 1.5F, 0, 0, 0, 0, -1, -1, -1, -4.5F, -3, -2}}};
    add("camera", {seen});
    seen.matrices = {{"cameraTransform", {1, 0, 0, 1, 0, 0, -1, 2, 0, 1, 0, 3, 0, 0, 0, 1}}};
    seen.numbers = {{"cameraFov", 45.0F}, {"cameraNearRange", 1.0F}, {"cameraFarRange", 1e18F}};
    seen.attributes = {{"vrayInfo/filename", "a.mb"}};
    add("camera_of_vray", {seen});
    corpus.Add("luminance_chroma.exr", exr_samples::WriteLumaChroma(8, 6, 0.5F, 0.25F, 0.125F));
    const std::string half = exr_samples::Write(Part{});
    corpus.Add("too_large.exr", exr_samples::WithWindows(half, {0, 0, 99999, 99999}));
    corpus.Add("lies.exr", exr_samples::WithWindows(half, {0, 0, 400, 400}));
    corpus.Add("cut.exr", half.substr(0, half.size() / 2));
}

void WriteImages(const Corpus& corpus) {
    const image_samples::Image colors{
        .width = 2, .height = 2, .samples = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}};
    const image_samples::Image alpha{.channels = 4, .samples = {100, 50, 20, 128}};
    const image_samples::Image deep{.bits = 16, .samples = {1, 1000, 65535}};
    const image_samples::Image floats{
        .channels = 4, .bits = 32, .samples = {0x3f800000, 0x7fc00000, 0xff800000, 0x3f000000}};
    corpus.Add("colors.png", image_samples::Png(colors));
    corpus.Add("alpha.png", image_samples::Png(alpha, 45455));
    corpus.Add("deep.png", image_samples::Png(deep));
    corpus.Add("grey.png", image_samples::Png({.channels = 1, .samples = {7}}));
    using image_samples::ExtraSample;
    corpus.Add("colors.tif", image_samples::Tiff(colors, ExtraSample::Straight, 6));
    corpus.Add("premultiplied.tif", image_samples::Tiff(alpha, ExtraSample::Premultiplied));
    corpus.Add("floats.tif", image_samples::Tiff(floats));
    corpus.Add("colors.tga", image_samples::Tga(colors, 22));
    corpus.Add("alpha.tga", image_samples::Tga(alpha, 0, 4));
    corpus.Add("flat.hdr", image_samples::Hdr({.channels = 4, .samples = {1, 2, 3, 128}}));
    const std::string png = image_samples::Png(colors);
    corpus.Add("cut.png", png.substr(0, png.size() - 20));
}

void WriteTexts(const Corpus& frames, const Corpus& settings) {
    using namespace std::string_view_literals;
    int number = 0;
    for (const std::string_view text :
         {"1-10,20-40x2\0shot.####.exr"sv, "-5--1, 7\0a_%04d.exr"sv, "1,\0a$F4.exr"sv,
          "3-1\0a.####.b.exr"sv, "1-3x0\0##.%d"sv, "99999999999-\0$F"sv}) {
        frames.Add("list" + std::to_string(++number), std::string(text));
    }
    number = 0;
    for (const std::string_view text :
         {"bitDepth=8"sv, "#46=16"sv, "resolution=72.5"sv, "autoSort=off"sv,
          "nodeIDList=1, 3 [a]"sv, "namedSelectionSetsList=a,b,"sv, "renderOrder=2001"sv,
          "objectList=1"sv, "bitdept=8"sv, "=="sv, "#=1"sv, "resolution=nan"sv}) {
        settings.Add("set" + std::to_string(++number), std::string(text));
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("make_corpus FOLDER\n", stderr);
        return 2;
    }
    const fs::path root = argv[1];
    WriteExr(Corpus(root, "exr"));
    WriteImages(Corpus(root, "image"));
    WriteTexts(Corpus(root, "frames"), Corpus(root, "set"));
    return 0;
}
