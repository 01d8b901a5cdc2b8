#include "command/info.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/command/descriptions.h"

namespace command {
namespace {

using nlohmann::json;
using testing::HasSubstr;

Description SampleFile() {
    Description file;
    file.path = "in/a.exr";
    file.format = "OpenEXR";
    Part part;
    part.storage = "scanline";
    part.compression = "zip";
    part.dataWindow = {1, 2, 8, 4};
    part.displayWindow = {0, 0, 9, 4};
    part.pixelAspect = 2.0F;
    part.attributes = {{"note", "string", std::string(100, 'x')},
                       {"views", "stringvector", std::vector<std::string>{"left", "right"}},
                       {"frame", "float", 7.5},
                       {"pair", "v2f", std::vector<double>{1.0, 2.5}},
                       {"odd", "opaque", std::monostate()}};
    file.parts = {part};
    file.layers = {
        {"RGBA", true, 0, {{"A", "A"}, {"B", "B"}, {"G", "G"}, {"R", "R"}}},
        {"V.Depth", false, 0, {{"V.Depth.Z", "Z", SampleType::Float, 2, 2}}},
        {"mix", false, 0, {{"mix.R", "R"}, {"mix.id", "id", SampleType::Unsigned32}}},
    };
    file.warnings = {"something is odd"};
    return file;
}

std::string TextOf(const Description& file) {
    return DescribeAsText(Inform(file));
}

std::string JsonOf(const Description& file) {
    return DescribeAsJson(Inform(file));
}

TEST(Info, TextTellsPartsLayersAndBeauty) {
    EXPECT_EQ(
        TextOf(SampleFile()),
        "in/a.exr: OpenEXR, 10x5\n"
        "part 1: scanline, compression zip\n"
        "    display window 10x5 from (0, 0) to (9, 4)\n"
        "    data window 8x3 from (1, 2) to (8, 4)\n"
        "    pixel aspect ratio 2.0000\n"
        "    layer RGBA: A B G R, half; becomes the picture\n"
        "    layer V.Depth: Z, float, with fewer samples than pixels; becomes nothing: it has "
        "fewer samples than pixels\n"
        "    layer mix: R id, half uint32; becomes render element \"mix\" (colour) and render "
        "element \"mix id\" (object IDs), and the object IDs of the mattes\n"
        "    note (string): " +
            std::string(60, 'x') +
            "... (100 bytes)\n"
            "    views (stringvector): left right\n"
            "    frame (float): 7.5\n"
            "    pair (v2f): 1 2.5\n"
            "    odd (opaque):\n"
            "beauty: RGBA, because its channels have no layer name; alpha in A\n"
            "with --all: 2 render elements, 0 objects, 0 materials; 1.6 kB of memory for "
            "pixels, and at most 2.1 kB of document at 16 bits\n"
            "warning: something is odd\n"
            "warning: layer \"V.Depth\" has fewer samples than pixels and is left out\n"
            "warning: layer \"mix\" has no channel for green and blue; 0 stands there\n"
            "warning: layer \"mix\" is of no known kind; it counts as colour\n");
}

TEST(Info, TextFromTheFileIsMadeSafe) {
    Description file = SampleFile();
    file.layers[1].name = "evil\x1b[2J\nlayer";
    file.parts[0].name = "p\tq";
    const std::string text = TextOf(file);
    EXPECT_THAT(text, HasSubstr("layer evil [2J layer: Z"));
    EXPECT_THAT(text, HasSubstr("part 1 \"p q\": scanline"));
}

TEST(Info, AValueIsNotCutInsideACharacter) {
    Description file = SampleFile();
    file.parts[0].attributes = {{"note", "string", std::string(59, 'x') + "ä" + "y"}};
    EXPECT_THAT(TextOf(file), HasSubstr(": " + std::string(59, 'x') + "... (62 bytes)\n"));
}

TEST(Info, AFileWithoutAPictureSaysWhy) {
    Description file = SampleFile();
    file.layers.erase(file.layers.begin());
    file.layers[1].channels.erase(file.layers[1].channels.begin());
    EXPECT_THAT(TextOf(file), HasSubstr("beauty: none; no layer looks like the picture"));
    EXPECT_TRUE(json::parse(JsonOf(file))["beauty"].is_null());
}

TEST(Info, ADepthThatIsADistanceIsToldAsAnImage) {
    const Description file = descriptions::File(descriptions::Part{descriptions::Joined(
        descriptions::Channels({"R", "G", "B", "A"}), descriptions::Channels({"depth.Z"}))});
    EXPECT_THAT(TextOf(file), HasSubstr("with --all: 1 render elements, 0 objects, 0 materials, a "
                                        "depth image; "));
    EXPECT_EQ(json::parse(JsonOf(file))["expect"]["depthImage"], true);
}

TEST(Info, JsonHoldsTheSame) {
    const json file = json::parse(JsonOf(SampleFile()));
    EXPECT_EQ(file["file"], "in/a.exr");
    EXPECT_EQ(file["format"], "OpenEXR");
    EXPECT_EQ(file["width"], 10);
    EXPECT_EQ(file["height"], 5);
    EXPECT_EQ(file["pixelAspectRatio"], 2.0);
    const json& part = file["parts"][0];
    EXPECT_TRUE(part["name"].is_null());
    EXPECT_EQ(part["storage"], "scanline");
    EXPECT_EQ(part["compression"], "zip");
    EXPECT_EQ(part["dataWindow"], (json{{"min", {1, 2}}, {"max", {8, 4}}}));
    EXPECT_EQ(part["deep"], false);
    EXPECT_EQ(part["complete"], true);
    EXPECT_EQ(part["layers"].size(), 3U);
    EXPECT_EQ(part["layers"][1], json::parse(R"({"name": "V.Depth", "channels":
                  [{"name": "V.Depth.Z", "type": "float", "sampling": [2, 2]}],
                  "becomes": "nothing: it has fewer samples than pixels"})"));
    EXPECT_EQ(part["attributes"][0]["value"], std::string(100, 'x')) << "not cut";
    EXPECT_EQ(part["attributes"][1]["value"], (json{"left", "right"}));
    EXPECT_EQ(part["attributes"][2]["value"], 7.5);
    EXPECT_EQ(part["attributes"][3]["value"], (json{1.0, 2.5}));
    EXPECT_TRUE(part["attributes"][4]["value"].is_null());
    EXPECT_EQ(file["beauty"],
              json::parse(R"({"layer": "RGBA", "part": 0, "why": "its channels have no layer name",
                  "red": "R", "green": "G", "blue": "B", "alpha": "A"})"));
    EXPECT_EQ(file["warnings"].size(), 4U);
    EXPECT_EQ(file["warnings"][0], "something is odd");
    EXPECT_TRUE(file["renderer"].is_null());
    EXPECT_EQ(file["elements"][1], json::parse(R"({"name": "mix id", "layer": "mix",
                  "kind": "object IDs", "data": true})"));
    EXPECT_EQ(file["cryptomattes"], json::array());
    EXPECT_EQ(file["expect"], json::parse(R"({"elements": 2, "objects": 0, "materials": 0,
                  "depthImage": false, "memoryBytes": 1550, "mostDocumentBytes": {"8": 1050, "16": 2100, "32": 4200}})"));
}

TEST(Info, TheCameraHasALine) {
    Description file = SampleFile();
    file.parts[0].camera =
        RenderCamera{.transform = {1, 0, 0, 1.5, 0, 0, -1, -2, 0, 1, 0, 0.125, 0, 0, 0, 1},
                     .lens = {.fieldOfView = 54.4204},
                     .attribute = "worldToCamera",
                     .up = UpAxis::Y};
    EXPECT_THAT(TextOf(file), HasSubstr("\ncamera: perspective, 54.42 degrees across, at 1.50 "
                                        "-2.00 0.12 with z up; from worldToCamera, whose world "
                                        "has y up\nwarning: something is odd\n"));
    file.parts[0].camera->lens = {.width = 8};
    file.parts[0].camera->up = UpAxis::Z;
    EXPECT_THAT(TextOf(file), HasSubstr("\ncamera: parallel, 8.00 across, at 1.50 -2.00 0.12 with "
                                        "z up; from worldToCamera, whose world has z up\n"));
    file.parts[0].camera->lens = {};
    EXPECT_THAT(TextOf(file), HasSubstr("\ncamera: at 1.50 -2.00 0.12 with z up; from "));
}

TEST(Info, JsonHasTheCamera) {
    Description file = SampleFile();
    EXPECT_TRUE(json::parse(JsonOf(file))["camera"].is_null());
    file.parts[0].camera =
        RenderCamera{.transform = {1, 0, 0, 1.5, 0, 0, -1, -2, 0, 1, 0, 0.125, 0, 0, 0, 1},
                     .lens = {.fieldOfView = 54.5, .farRange = 10},
                     .attribute = "cameraTransform"};
    EXPECT_EQ(json::parse(JsonOf(file))["camera"], json::parse(R"({
        "attribute": "cameraTransform", "up": "z",
        "transform": [[1, 0, 0, 1.5], [0, 0, -1, -2], [0, 1, 0, 0.125], [0, 0, 0, 1]],
        "projection": "perspective", "fov": 54.5, "width": null, "near": null, "far": 10})"));
    file.parts[0].camera->lens = {.width = 8};
    const json camera = json::parse(JsonOf(file))["camera"];
    EXPECT_EQ(camera["projection"], "parallel");
    EXPECT_EQ(camera["width"], 8);
    file.parts[0].camera->lens = {};
    EXPECT_TRUE(json::parse(JsonOf(file))["camera"]["projection"].is_null());
}

TEST(Info, JsonReplacesWhatIsNotUtf8) {
    Description file = SampleFile();
    file.layers[0].name = "a\xff";
    EXPECT_EQ(json::parse(JsonOf(file))["parts"][0]["layers"][0]["name"], "a\xef\xbf\xbd");
}

}  // namespace
}  // namespace command
