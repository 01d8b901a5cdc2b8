// Frames of render files behind the host's interfaces, as the effect finds them.
#include "command/frame_loader.h"

#include <gmock/gmock.h>
#include <iparamb2.h>
#include <rendererclasses.h>

#include <array>

#include "command/failure.h"
#include "command/save_plan.h"
#include "command/session.h"
#include "host/application.h"
#include "host/host_renderer.h"
#include "host/text.h"
#include "plugin/entry.h"
#include "tests/command/fault_text.h"
#include "tests/command/pass_samples.h"
#include "tests/command/test_folder.h"

namespace command {
namespace {

using pass_samples::Always;
using pass_samples::cubeID;
using pass_samples::floorID;
using pass_samples::Only;
using pass_samples::Sample;
using pass_samples::sphereID;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using Words = std::vector<std::string>;
using Pixel = std::array<float, 4>;

// The outputs that --all can turn on.
constexpr const char* outputs[] = {"createRenderElementLayers",
                                   "outputObjects",
                                   "outputNodeIDs",
                                   "outputMtlIDs",
                                   "outputSceneLayers",
                                   "outputNamedSelectionSets",
                                   "createNodeIDLayer",
                                   "createMtlIDLayer",
                                   "createNodeRenderIDLayer",
                                   "createNormalLayer"};

class FrameLoaderTest : public FolderTest {
  protected:
    ~FrameLoaderTest() override { End(); }

    void End() {
        loader.reset();
        session.reset();
        scene.reset();
    }

    // What "save" does before the first frame.
    void Begin(Words words, Class_ID renderer = {}) {
        End();
        // Halfs stay as they are.
        words.insert(words.begin(), {"save", PathOf("a.exr"), "--set", "bitDepth=32"});
        arguments = std::get<SaveArguments>(ParseArguments(words));
        plan = MakePlan(arguments);
        if (!arguments.scene.empty()) scene = ReadSceneFile(arguments.scene);
        const SceneDescription* known = scene ? &*scene : nullptr;
        std::vector<Setting> settings;
        for (const std::string& text : arguments.settings)
            settings.push_back(ParseSetting(text, plugin::EffectParameters()));
        session.emplace(arguments, plan, settings, known, renderer);
        loader.emplace(arguments, *session, known,
                       [this](const std::string& text) { warnings.push_back(text); });
    }
    std::string Scene(const std::string& members) {
        return Write("scene.json", R"({"veltrane": 1, )" + members + "}");
    }
    host::Owned<host::ImageBitmap> Load(const Sample& sample, const std::string& name = "a.exr") {
        return loader->Load(Write(name, sample.Bytes()));
    }
    std::string FrameLoaderComplaint(const Sample& sample) {
        return FaultText<InputError>([&] { Load(sample); });
    }

    static host::RenderElementManager& Elements() { return host::App().elements[RS_Production]; }
    static host::RenderElement& Element(const std::string& name) {
        host::RenderElement* element = Elements().Find(host::FromUtf8(name));
        if (!element) throw std::logic_error("no element " + name);
        return *element;
    }
    // Null for an element that wasn't decoded.
    static Bitmap* BitmapOf(const std::string& name) {
        PBBitmap* holder = nullptr;
        Element(name).GetPBBitmap(holder);
        return holder ? holder->bm : nullptr;
    }
    static Words Names() {
        Words names;
        for (int i = 0; i < Elements().NumRenderElements(); ++i)
            names.push_back(host::ToUtf8(Elements().GetRenderElement(i)->ElementName()));
        return names;
    }
    static Words Decoded() {
        Words names;
        for (const std::string& name : Names()) {
            if (BitmapOf(name)) names.push_back(name);
        }
        return names;
    }
    static Pixel PixelAt(Bitmap& bitmap, int x, int y) {
        BMM_Color_fl color{};
        EXPECT_EQ(bitmap.Storage()->GetLinearPixels(x, y, 1, &color), 1);
        return {color.r, color.g, color.b, color.a};
    }

    // A setting of an element in the effect.
    int SettingOf(const std::string& element, const std::string& name) const {
        const ParamID list = Session::IdOf("layersProduction");
        for (int i = 0; i < session->Block().Count(list); ++i) {
            IParamBlock2* block = session->Block().GetReferenceTarget(list, 0, i)->GetParamBlock(0);
            if (block->GetReferenceTarget(0) != &Element(element)) continue;
            return block->GetInt(ParseSetting(name + "=0", plugin::LayerParameters()).row->id);
        }
        throw std::logic_error("no settings of " + element);
    }
    std::string TextOf(const std::string& name) const {
        return host::ToUtf8(session->Block().GetStr(Session::IdOf(name)));
    }
    Words Objects() const {
        const ParamID list = Session::IdOf("objectList");
        Words names;
        for (int i = 0; i < session->Block().Count(list); ++i)
            names.push_back(host::ToUtf8(session->Block().GetINode(list, 0, i)->GetName()));
        return names;
    }
    // Those of `outputs` that are on.
    Words On() const {
        Words on;
        for (const char* name : outputs) {
            if (session->GetInt(name)) on.emplace_back(name);
        }
        return on;
    }

    // What the effect reads of the pixel's fragments.
    static std::vector<host::Fragment> Fragments(host::ImageBitmap& picture, int x, int y = 0) {
        std::vector<host::Fragment> fragments;
        GBuffer* gbuffer = picture.Storage()->GetGBuffer();
        if (!gbuffer) return fragments;
        GBufReader* reader = gbuffer->CreateReader();
        EXPECT_TRUE(reader->StartLine(y));
        EXPECT_GE(reader->StartPixel(x), 0);
        while (reader->StartNextLayer()) {
            host::Fragment each;
            reader->ReadChannelData(GB_NODE_RENDER_ID, &each.renderID);
            reader->ReadChannelData(GB_NODE_ID, &each.nodeID);
            reader->ReadChannelData(GB_MTL_ID, &each.mtlID);
            reader->ReadChannelData(GB_COVERAGE, &each.coverage);
            reader->ReadChannelData(GB_NORMAL, &each.normal);
            reader->ReadChannelData(GB_COLOR, &each.color);
            fragments.push_back(each);
        }
        gbuffer->DestroyReader(reader);
        return fragments;
    }
    static USHORT RenderIDOf(const std::string& node) {
        return host::App().scene.FindNode(host::FromUtf8(node))->GetRenderID();
    }

    SaveArguments arguments;
    SavePlan plan;
    std::optional<SceneDescription> scene;
    std::optional<Session> session;
    std::optional<FrameLoader> loader;
    Words warnings;
};

Sample Still() {
    return Sample().Picture();
}

// The left half of the frame is of the first id, the right one of the second.
pass_samples::Ranks Halves(std::uint32_t left, std::uint32_t right) {
    return Only([=](int x, int) { return x < 2 ? left : right; });
}

// Render elements

TEST_F(FrameLoaderTest, ThePictureComesWithTheFramesSize) {
    Begin({});
    const auto picture = Load(Sample(5, 3).Picture(0.25));
    EXPECT_EQ(picture->Storage()->Width(), 5);
    EXPECT_EQ(picture->Storage()->Height(), 3);
    EXPECT_EQ(PixelAt(*picture, 4, 2), (Pixel{0.25F, 0.25F, 0.25F, 0.25F}));
    EXPECT_EQ(host::App().settings.render.width, 5);
    EXPECT_EQ(host::App().settings.render.height, 3);
    EXPECT_EQ(picture->Storage()->GetGBuffer(), nullptr) << "nobody wants it";
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(FrameLoaderTest, EveryPassIsAnElementOfItsClassWithItsPixels) {
    Begin({});
    Load(Still()
             .Color("Emit", 0.25, 0.5, 0.75)
             .Float("Depth.Z", [](int x, int y) { return 10.0 + x + 4 * y; })
             .Half("Vector.X", Always(1.0))
             .Half("Vector.Y", Always(2.0)));
    EXPECT_THAT(Decoded(), ElementsAre("Depth", "Emit", "Vector"));
    EXPECT_EQ(Element("Emit").ClassID(), PassClassID(PassKind::Emission));
    EXPECT_EQ(Element("Depth").ClassID(), PassClassID(PassKind::Depth));
    EXPECT_EQ(PixelAt(*BitmapOf("Emit"), 1, 1), (Pixel{0.25F, 0.5F, 0.75F, 1.0F}));
    EXPECT_EQ(PixelAt(*BitmapOf("Depth"), 3, 1), (Pixel{17.0F, 17.0F, 17.0F, 1.0F}));
    EXPECT_EQ(PixelAt(*BitmapOf("Vector"), 0, 0), (Pixel{1.0F, 2.0F, 0.0F, 1.0F}));
}

TEST_F(FrameLoaderTest, AMissingColourIsBlackAndMovesNoOther) {
    Begin({});
    Load(Still()
             .Half("a.G", Always(0.25))
             .Half("a.B", Always(0.5))
             .Half("b.R", Always(0.25))
             .Half("b.B", Always(0.5))
             .Float("c.B", Always(0.5))
             .Half("c.A", Always(0.75)));
    EXPECT_EQ(PixelAt(*BitmapOf("a"), 0, 0), (Pixel{0.0F, 0.25F, 0.5F, 1.0F}));
    EXPECT_EQ(PixelAt(*BitmapOf("b"), 0, 0), (Pixel{0.25F, 0.0F, 0.5F, 1.0F}));
    EXPECT_EQ(PixelAt(*BitmapOf("c"), 0, 0), (Pixel{0.0F, 0.0F, 0.5F, 0.75F}));
    EXPECT_EQ(warnings.size(), 3U);
}

TEST_F(FrameLoaderTest, TheDocumentsDepthDecidesWhetherHalfsAreRounded) {
    const Sample sample = Still().Color("x", 2.0, 0.5, 0.25);
    Begin({});
    auto picture = Load(sample);
    EXPECT_EQ(PixelAt(*BitmapOf("x"), 0, 0)[0], 2.0F);
    Begin({"--set", "bitDepth=16"});
    picture = Load(sample);
    EXPECT_EQ(PixelAt(*BitmapOf("x"), 0, 0)[0], 1.0F);
}

TEST_F(FrameLoaderTest, WhatTheDocumentLeavesOutIsNotDecoded) {
    const Sample sample = Still().Color("x", 1, 1, 1).Color("y", 1, 1, 1);
    Begin({});
    Load(sample);
    EXPECT_THAT(Decoded(), ElementsAre("x", "y"));
    Begin({"--element", "x:enabled=false"});
    Load(sample);
    EXPECT_THAT(Names(), ElementsAre("x", "y"));
    EXPECT_THAT(Decoded(), ElementsAre("y"));
    Begin({"--set", "createRenderElementLayers=false"});
    Load(sample);
    EXPECT_THAT(Decoded(), IsEmpty());
    Begin({"--scene", Scene(R"("elements": [{"name": "y", "enabled": false}])")});
    Load(sample);
    EXPECT_THAT(Decoded(), ElementsAre("x"));
}

TEST_F(FrameLoaderTest, DamageInAPassThatIsOffDoesntMatter) {
    const auto part = [](const std::string& name, const std::string& layer) {
        exr_samples::Part pass = Sample(64, 64).Color(layer, 1, 1, 1).ToPart();
        pass.name = name;
        return pass;
    };
    exr_samples::Part picture = Sample(64, 64).Picture().ToPart();
    picture.name = "picture";
    std::string bytes = exr_samples::Write({picture, part("good", "x"), part("bad", "y")});
    bytes.replace(bytes.size() - 16, 16, 16, '\xff');
    const std::string path = Write("a.exr", bytes);
    Begin({});
    EXPECT_THAT(FaultText<InputError>([&] { loader->Load(path); }), StartsWith(path + ": "));
    EXPECT_THAT(Decoded(), IsEmpty()) << "a frame that failed leaves nothing";
    Begin({"--element", "*y:enabled=false"});
    EXPECT_TRUE(loader->Load(path));
    EXPECT_EQ(Decoded().size(), 1U);
}

TEST_F(FrameLoaderTest, ElementSettingsGoByNamesAndStarsAndTheLastOneCounts) {
    Begin({"--element", "diff*:visible=false", "--element", "DIFFIND:blendingMode=Screen",
           "--element", "DiffInd:visible=true", "--element", "nothing*:visible=false"});
    Load(Still().Color("DiffDir", 1, 1, 1).Color("DiffInd", 1, 1, 1).Color("Emit", 1, 1, 1));
    EXPECT_EQ(SettingOf("DiffDir", "visible"), 0);
    EXPECT_EQ(SettingOf("DiffInd", "visible"), 1);
    EXPECT_EQ(SettingOf("DiffInd", "blendingMode"), 7);
    EXPECT_NE(SettingOf("DiffDir", "blendingMode"), 7);
}

TEST_F(FrameLoaderTest, ElementSettingsOfTheSceneStandBelowTheUsers) {
    Begin({"--scene", Scene(R"("effect": {"elements": {"x": {"mask": true, "visible": false}}})"),
           "--element", "x:visible=true"});
    Load(Still().Color("x", 1, 1, 1));
    EXPECT_EQ(SettingOf("x", "mask"), 1);
    EXPECT_EQ(SettingOf("x", "visible"), 1);
}

TEST_F(FrameLoaderTest, AWrongElementNameTellsTheNearest) {
    Begin({"--element", "DifDir:visible=false"});
    EXPECT_EQ(FrameLoaderComplaint(Still().Color("DiffDir", 1, 1, 1).Color("Emit", 1, 1, 1)),
              PathOf("a.exr") + ": there is no render element \"DifDir\"; the nearest are DiffDir");
    Begin({"--element", "DifDir:visible=false"});
    EXPECT_EQ(FrameLoaderComplaint(Still()),
              PathOf("a.exr") + ": there is no render element \"DifDir\", nor any other");
}

TEST_F(FrameLoaderTest, AWrongSettingOfAnElementIsWrongUsage) {
    const auto complaint = [&](const std::string& text) {
        return FaultText<UsageError>([&] { Begin({"--element", text}); });
    };
    EXPECT_EQ(complaint("x:visibel=1"),
              "--element: there is no parameter \"visibel\"; the nearest are visible, and "
              "\"veltrane params --elements\" lists them all");
    EXPECT_EQ(complaint("x"),
              "--element x: expected NAME:SETTING=VALUE, such as Shadow:visible=false");
}

TEST_F(FrameLoaderTest, ElementsKeepTheirSettingsOverFrames) {
    Begin({"--element", "x:visible=false"});
    Load(Still().Color("x", 0.5, 0.5, 0.5), "1.exr");
    const host::RenderElement* x = &Element("x");
    Load(Still().Color("y", 0.5, 0.5, 0.5), "2.exr");
    EXPECT_THAT(Names(), ElementsAre("x", "y"));
    EXPECT_THAT(Decoded(), ElementsAre("y")) << "nothing is left of the frame before";
    Load(Still().Color("x", 0.25, 0.25, 0.25), "3.exr");
    EXPECT_EQ(&Element("x"), x);
    EXPECT_THAT(Decoded(), ElementsAre("x"));
    EXPECT_EQ(PixelAt(*BitmapOf("x"), 0, 0)[0], 0.25F);
    EXPECT_EQ(SettingOf("x", "visible"), 0);
}

TEST_F(FrameLoaderTest, TheSceneNamesClassesAndMatteColours) {
    Begin({"--scene", Scene(R"("nodes": [{"name": "Cube"}],
        "elements": [{"name": "m", "class": "MultiMatteElement",
                      "multiMatte": {"red": {"id": 7, "include": false},
                                     "blue": {"nodes": ["Cube"]}}}])")});
    Load(Still().Color("m", 1, 1, 1));
    EXPECT_EQ(Element("m").ClassID(), VRAY_MULTI_MATTE_ELEMENT);
    auto* matte = static_cast<IMultiMatte*>(Element("m").GetInterface(MULTI_MATTE_INTERFACE));
    ASSERT_NE(matte, nullptr);
    MultiMatteComponent red;
    matte->GetComponent(0, red);
    EXPECT_TRUE(red.idOn);
    EXPECT_EQ(red.id, 7);
    EXPECT_FALSE(red.include);
    MultiMatteComponent blue;
    matte->GetComponent(2, blue);
    EXPECT_FALSE(blue.idOn);
    ASSERT_EQ(blue.nodes.Count(), 1);
    EXPECT_EQ(host::ToUtf8(blue.nodes[0]->GetName()), "Cube");
}

// --all

TEST_F(FrameLoaderTest, AllTurnsOnWhatTheFileHasAndNothingElse) {
    Begin({});
    Load(Still().Matte("CryptoObject", {{"Sphere", sphereID}}, Halves(sphereID, 0)));
    EXPECT_THAT(On(), ElementsAre("createRenderElementLayers"));
    const auto all = [&](const Sample& sample) {
        Begin({"--all"});
        Load(sample);
        Words on = On();
        EXPECT_EQ(on.front(), "createRenderElementLayers");
        on.erase(on.begin());
        return on;
    };
    EXPECT_THAT(all(Still()), IsEmpty());
    EXPECT_THAT(all(Still().Matte("CryptoObject", {}, Halves(sphereID, 0))),
                ElementsAre("outputObjects", "createNodeRenderIDLayer"));
    EXPECT_THAT(all(Still().Matte("CryptoMaterial", {}, Halves(sphereID, 0))),
                ElementsAre("outputMtlIDs", "createMtlIDLayer"));
    EXPECT_THAT(all(Still().Unsigned("objectID", Always(1))),
                ElementsAre("outputNodeIDs", "createNodeIDLayer"));
    EXPECT_THAT(all(Still().Unsigned("materialID", Always(1))),
                ElementsAre("outputMtlIDs", "createMtlIDLayer"));
    EXPECT_THAT(
        all(Still().Unsigned("objectID", Always(1)).Matte("CryptoObject", {}, Halves(sphereID, 0))),
        ElementsAre("outputObjects", "createNodeIDLayer", "createNodeRenderIDLayer"));
    EXPECT_THAT(all(Still()
                        .Half("Normal.X", Always(0))
                        .Half("Normal.Y", Always(0))
                        .Half("Normal.Z", Always(1))),
                ElementsAre("createNormalLayer"));
}

TEST_F(FrameLoaderTest, AllTakesInWhatTheSceneTells) {
    const std::string file = Scene(R"("nodes": [{"name": "Sphere", "objectID": 5}],
        "layers": [{"name": "l", "nodes": ["Sphere"]}],
        "selectionSets": [{"name": "s", "nodes": ["Sphere"]}])");
    Begin({"--all", "--scene", file});
    Load(Still().Matte("CryptoObject", {{"Sphere", sphereID}}, Halves(sphereID, 0)));
    EXPECT_THAT(On(), ElementsAre("createRenderElementLayers", "outputObjects", "outputSceneLayers",
                                  "outputNamedSelectionSets", "createNodeIDLayer",
                                  "createNodeRenderIDLayer"));
    Begin({"--all", "--scene", file});
    Load(Still());
    EXPECT_THAT(On(), ElementsAre("createRenderElementLayers"))
        << "without objects nothing can come of them";
}

TEST_F(FrameLoaderTest, AllNeverGoesOverASettingOfTheUserOrTheScene) {
    Begin({"--all", "--set", "outputObjects=false", "--set", "createRenderElementLayers=off",
           "--scene", Scene(R"("effect": {"parameters": {"createNodeRenderIDLayer": false}})")});
    Load(Still().Matte("CryptoObject", {}, Halves(sphereID, 0)).Color("x", 1, 1, 1));
    EXPECT_THAT(On(), IsEmpty());
    EXPECT_THAT(Decoded(), IsEmpty());
}

// Objects and materials

TEST_F(FrameLoaderTest, ACryptomatteBecomesNodesAndFragments) {
    Begin({"--all"});
    const auto picture =
        Load(Still()
                 .Matte("CryptoObject", {{"Sphere 10", sphereID}, {"Sphere 9", cubeID}},
                        [](int x, int) {
                            return std::pair(pass_samples::MatteRank{sphereID, x == 0 ? 1.0 : 0.6},
                                             pass_samples::MatteRank{cubeID, x == 1 ? 0.4 : 0.0});
                        })
                 .Matte("CryptoMaterial", {{"Glass [old]", floorID}}, Halves(floorID, floorID)));
    EXPECT_THAT(Objects(), ElementsAre("Sphere 9", "Sphere 10")) << "as people count";
    EXPECT_EQ(TextOf("mtlIDList"), "1 [Glass (old)]");
    const auto one = Fragments(*picture, 0);
    ASSERT_EQ(one.size(), 1U);
    EXPECT_EQ(one[0].renderID, RenderIDOf("Sphere 10"));
    EXPECT_EQ(one[0].mtlID, 1);
    EXPECT_EQ(one[0].coverage, 255);
    const auto two = Fragments(*picture, 1);
    ASSERT_EQ(two.size(), 2U);
    EXPECT_EQ(two[0].coverage, 153);
    EXPECT_EQ(two[1].renderID, RenderIDOf("Sphere 9"));
    EXPECT_EQ(two[1].coverage, 102);
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(FrameLoaderTest, WithoutAManifestObjectsAreCalledByTheirIds) {
    Begin({"--all"});
    const auto picture = Load(Still().Matte("CryptoObject", {}, Halves(sphereID, floorID)));
    EXPECT_THAT(Objects(), ElementsAre("3f12345f", "c1abcdef"));
    EXPECT_EQ(Fragments(*picture, 3).at(0).renderID, RenderIDOf("c1abcdef"));
    EXPECT_THAT(warnings, ElementsAre(PathOf("a.exr") +
                                      ": Cryptomatte \"CryptoObject\": it has no manifest; its "
                                      "mattes are named by their ids"));
}

TEST_F(FrameLoaderTest, NodesOfTheSceneAreFoundByName) {
    Begin({"--all", "--scene",
           Scene(R"("nodes": [{"name": "Cube", "objectID": 9, "id": 40}, {"name": "Lamp"}])")});
    const auto picture = Load(Still().Matte("CryptoObject", {{"Cube", cubeID}}, Halves(cubeID, 0)));
    EXPECT_EQ(host::App().scene.NumNodes(), 2);
    EXPECT_THAT(Objects(), ElementsAre("Cube"));
    const auto cube = Fragments(*picture, 0);
    ASSERT_EQ(cube.size(), 1U);
    EXPECT_EQ(cube[0].renderID, 40);
    EXPECT_EQ(cube[0].nodeID, 9);
    EXPECT_EQ(TextOf("nodeIDList"), "9") << "the numbers that its objects have";
}

TEST_F(FrameLoaderTest, NodesAndNumbersAreTheSameInEveryFrame) {
    Begin({"--all"});
    const auto frame = [&](const std::string& file, const std::string& first,
                           const std::string& second) {
        return Load(Still()
                        .Matte("CryptoObject", {{first, sphereID}, {second, cubeID}},
                               Halves(sphereID, cubeID))
                        .Matte("CryptoMaterial", {{first, sphereID}, {second, cubeID}},
                               Halves(sphereID, cubeID)),
                    file);
    };
    const auto before = frame("1.exr", "a", "b");
    EXPECT_EQ(TextOf("mtlIDList"), "1 [a], 2 [b]");
    const auto after = frame("2.exr", "b", "c");
    EXPECT_EQ(TextOf("mtlIDList"), "1 [a], 2 [b], 3 [c]");
    EXPECT_THAT(Objects(), ElementsAre("a", "b", "c"));
    const host::Fragment b = Fragments(*before, 3).at(0);
    const host::Fragment sameB = Fragments(*after, 0).at(0);
    EXPECT_EQ(sameB.renderID, b.renderID);
    EXPECT_EQ(sameB.mtlID, 2);
    EXPECT_EQ(b.mtlID, 2);
    EXPECT_EQ(Fragments(*after, 3).at(0).mtlID, 3);
    EXPECT_EQ(host::App().scene.NumNodes(), 3);
}

TEST_F(FrameLoaderTest, OfTooManyMaterialsThoseOfMostPixelsAreKept) {
    constexpr int count = 300;
    const auto id = [](int i) { return sphereID + static_cast<std::uint32_t>(i); };
    pass_samples::Names names;
    for (int i = 0; i < count; ++i)
        names.emplace_back("m" + std::to_string(i), id(i));
    // The last ones cover most.
    const Sample sample =
        Sample(count, 1).Picture().Matte("CryptoMaterial", names, [&](int x, int) {
            return std::pair(pass_samples::MatteRank{id(x), 0.25 + x / 512.0},
                             pass_samples::MatteRank{});
        });
    Begin({"--all"});
    const auto picture = Load(sample, "1.exr");
    EXPECT_THAT(warnings, ElementsAre(PathOf("1.exr") +
                                      ": 45 materials with the least coverage have no matte of "
                                      "their own: there is room for 255"));
    EXPECT_THAT(TextOf("mtlIDList"), StartsWith("1 [m299], 2 [m298], "));
    EXPECT_THAT(TextOf("mtlIDList"), testing::EndsWith(", 254 [m46], 255 [m45]"));
    EXPECT_EQ(Fragments(*picture, 299).at(0).mtlID, 1);
    EXPECT_EQ(Fragments(*picture, 45).at(0).mtlID, 255);
    EXPECT_THAT(Fragments(*picture, 44), IsEmpty());
    Load(sample, "2.exr");
    EXPECT_EQ(warnings.size(), 1U) << "once is enough";
}

TEST_F(FrameLoaderTest, ALongManifestOfFewMaterialsInThePictureIsNoMatter) {
    pass_samples::Names names;
    for (std::uint32_t i = 0; i < 300; ++i)
        names.emplace_back("m" + std::to_string(i), sphereID + i);
    Begin({"--all"});
    Load(Still().Matte("CryptoMaterial", names, Halves(sphereID + 299, sphereID + 7)));
    EXPECT_THAT(warnings, IsEmpty());
    EXPECT_EQ(TextOf("mtlIDList"), "1 [m7], 2 [m299]");
}

TEST_F(FrameLoaderTest, IntegerIdsListTheNumbersThatPixelsHave) {
    const auto sample = [](int first) {
        return Still()
            .Unsigned("objectID", [first](int x, int) { return x == 0 ? 0 : first + x; })
            .Unsigned("materialID", [](int x, int y) { return x + 4 * y == 5 ? 300 : 2; });
    };
    Begin({"--all"});
    const auto picture = Load(sample(6));
    EXPECT_EQ(TextOf("nodeIDList"), "7-9");
    EXPECT_EQ(TextOf("mtlIDList"), "2") << "the G-Buffer has room for 255";
    const auto pixel = Fragments(*picture, 2);
    ASSERT_EQ(pixel.size(), 1U);
    EXPECT_EQ(pixel[0].nodeID, 8);
    EXPECT_EQ(pixel[0].mtlID, 2);
    EXPECT_EQ(Fragments(*picture, 1, 1).at(0).mtlID, 0);
    EXPECT_THAT(Objects(), IsEmpty());
    Load(sample(20), "2.exr");
    EXPECT_EQ(TextOf("nodeIDList"), "7-9, 21-23") << "of all frames so far";
}

TEST_F(FrameLoaderTest, NumbersStoredAsFloatsAreNumbersToo) {
    Begin({"--all"});
    const auto picture =
        Load(Still().Color("DiffDir", 1, 1, 1).Float("IndexOB.X", [](int x, int) { return x; }));
    EXPECT_EQ(TextOf("nodeIDList"), "1-3");
    EXPECT_EQ(Fragments(*picture, 3).at(0).nodeID, 3);
}

TEST_F(FrameLoaderTest, ThePicturesAlphaIsTheCoverageOfWhatOnlyHasANumber) {
    Begin({"--all"});
    const auto picture = Load(Sample()
                                  .Half("R", Always(0.5))
                                  .Half("G", Always(0.5))
                                  .Half("B", Always(0.5))
                                  .Half("A", [](int x, int) { return x / 4.0; })
                                  .Unsigned("objectID", Always(3)));
    EXPECT_THAT(Fragments(*picture, 0), IsEmpty());
    EXPECT_EQ(Fragments(*picture, 2).at(0).coverage, 128);
    EXPECT_EQ(Fragments(*picture, 3).at(0).coverage, 191);
}

TEST_F(FrameLoaderTest, ListsThatTheUserOrTheSceneGaveStay) {
    const Sample sample = Still()
                              .Unsigned("objectID", Always(4))
                              .Unsigned("materialID", Always(6))
                              .Matte("CryptoObject", {{"Cube", cubeID}}, Halves(cubeID, 0))
                              .Matte("CryptoMaterial", {{"Glass", floorID}}, Halves(floorID, 0));
    Begin({"--all"});
    auto picture = Load(sample);
    EXPECT_EQ(TextOf("nodeIDList"), "4");
    EXPECT_EQ(TextOf("mtlIDList"), "1 [Glass]");
    EXPECT_EQ(Fragments(*picture, 0).at(0).mtlID, 1);
    Begin({"--all", "--set", "nodeIDList=1 [x]", "--set", "mtlIDList=6 [y]", "--scene",
           Scene(R"("nodes": [{"name": "Lamp"}],
                    "effect": {"parameters": {"objectList": ["Lamp"]}})")});
    picture = Load(sample);
    EXPECT_EQ(TextOf("nodeIDList"), "1 [x]");
    EXPECT_EQ(TextOf("mtlIDList"), "6 [y]");
    EXPECT_THAT(Objects(), ElementsAre("Lamp"));
    EXPECT_EQ(Fragments(*picture, 0).at(0).mtlID, 6) << "the user's list means the file's numbers";
}

TEST_F(FrameLoaderTest, WithoutAskersThereAreNoFragmentsAndNoNodes) {
    Begin({});
    const auto picture = Load(Still().Matte("CryptoObject", {{"Cube", cubeID}}, Halves(cubeID, 0)));
    EXPECT_EQ(picture->Storage()->GetGBuffer(), nullptr);
    EXPECT_EQ(host::App().scene.NumNodes(), 0);
}

TEST_F(FrameLoaderTest, IdsThatWentThroughHalfFloatsMakeNoMattes) {
    Begin({"--all"});
    const auto picture =
        Load(Still().Matte("CryptoObject", {{"Cube", 0x3f000000}}, Halves(0x3f000000, 0)));
    EXPECT_THAT(On(), ElementsAre("createRenderElementLayers"));
    EXPECT_THAT(warnings, ElementsAre(PathOf("a.exr") +
                                      ": the ids of Cryptomatte \"CryptoObject\" went through "
                                      "half floats, which destroys them: no matte can be made; "
                                      "render it with 32-bit floats"));
}

TEST_F(FrameLoaderTest, WhatTheReaderWarnsOfIsToldOnceARun) {
    const Sample sample = Still().Matte("CryptoObject", {}, Halves(cubeID, 0));
    Begin({"--all"});
    Load(sample, "1.exr");
    Load(sample, "2.exr");
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_THAT(warnings[0], StartsWith(PathOf("1.exr") + ": Cryptomatte "));
}

// Normals

Sample Facing(double x, double y, double z) {
    return Still()
        .Color("DiffDir", 1, 1, 1)
        .Half("Normal.X", Always(x))
        .Half("Normal.Y", Always(y))
        .Half("Normal.Z", Always(z));
}

TEST_F(FrameLoaderTest, NormalsOfTheWorldAreTurnedIntoTheCameras) {
    // It looks along the world's y; what faces it shows -y.
    Begin({"--all", "--scene", Scene(R"("nodes": [{"name": "c", "type": "camera",
        "transform": [[2, 0, 0, 5], [0, 0, -2, 6], [0, 2, 0, 7], [0, 0, 0, 1]]}],
        "render": {"camera": "c"})")});
    const auto normal = [&](const Sample& sample) {
        const auto picture = Load(sample);
        return DeCompressNormal(Fragments(*picture, 1).at(0).normal);
    };
    const Point3 towards = normal(Facing(0, -1, 0));
    EXPECT_NEAR(towards.x, 0.0F, 0.01F);
    EXPECT_NEAR(towards.y, 0.0F, 0.01F);
    EXPECT_NEAR(towards.z, 1.0F, 0.01F);
    const Point3 up = normal(Facing(0, 0, 1));
    EXPECT_NEAR(up.y, 1.0F, 0.01F);
    const Point3 right = normal(Facing(1, 0, 0));
    EXPECT_NEAR(right.x, 1.0F, 0.01F);
}

TEST_F(FrameLoaderTest, WithoutACameraNormalsStayAsTheyAre) {
    Begin({"--all", "--scene", Scene(R"("nodes": [{"name": "c", "type": "camera"}],
        "render": {"camera": "c"})")});
    const auto picture = Load(Facing(0, -1, 0));
    EXPECT_NEAR(DeCompressNormal(Fragments(*picture, 1).at(0).normal).y, -1.0F, 0.01F);
}

// The picture's own ways

TEST_F(FrameLoaderTest, WhatAPictureWithoutAlphaDoesntCoverIsTransparent) {
    Sample sample = Sample(4, 2).Half("R", Always(0.5)).Half("G", Always(0.5)).Half("B", Always(1));
    Begin({});
    auto picture = Load(sample);
    EXPECT_FALSE(picture->Storage()->HasAlpha());
    sample.GetPart().data = {1, 0, 2, 0};
    picture = Load(sample);
    EXPECT_TRUE(picture->Storage()->HasAlpha());
    EXPECT_EQ(PixelAt(*picture, 1, 0)[3], 1.0F);
    EXPECT_EQ(PixelAt(*picture, 2, 0), (Pixel{0.5F, 0.5F, 1.0F, 1.0F}));
    EXPECT_EQ(PixelAt(*picture, 0, 0), (Pixel{}));
    EXPECT_EQ(PixelAt(*picture, 3, 0), (Pixel{}));
    EXPECT_EQ(PixelAt(*picture, 1, 1), (Pixel{}));
}

TEST_F(FrameLoaderTest, TheSameGoesForFloatsAndForTheMasksOfNumbers) {
    Sample sample = Sample(4, 2)
                        .Float("R", Always(0.5))
                        .Float("G", Always(0.5))
                        .Float("B", Always(1))
                        .Unsigned("objectID", Always(3));
    sample.GetPart().data = {1, 0, 2, 0};
    Begin({"--all"});
    const auto picture = Load(sample);
    EXPECT_EQ(PixelAt(*picture, 1, 0), (Pixel{0.5F, 0.5F, 1.0F, 1.0F}));
    EXPECT_EQ(PixelAt(*picture, 3, 0), (Pixel{}));
    EXPECT_EQ(Fragments(*picture, 2).at(0).coverage, 255);
    EXPECT_THAT(Fragments(*picture, 3), IsEmpty());
}

TEST_F(FrameLoaderTest, LuminanceAndChromaCanHaveElementsAndMattes) {
    Sample sample = Sample(4, 2)
                        .Half("Y", Always(0.25))
                        .Half("RY", Always(0))
                        .Half("BY", Always(0))
                        .Color("x", 0.25, 0.5, 0.75)
                        .Matte("CryptoObject", {{"Cube", cubeID}}, Halves(cubeID, 0));
    for (exr_samples::Channel& channel : sample.GetPart().channels) {
        if (channel.name.size() == 2) channel.sampling = 2;
    }
    Begin({"--all"});
    const auto picture = Load(sample);
    EXPECT_NEAR(PixelAt(*picture, 2, 1)[0], 0.25F, 0.001F);
    EXPECT_NEAR(PixelAt(*picture, 2, 1)[2], 0.25F, 0.001F);
    EXPECT_EQ(PixelAt(*BitmapOf("x"), 0, 0)[1], 0.5F);
    EXPECT_EQ(Fragments(*picture, 0).at(0).renderID, RenderIDOf("Cube"));
    EXPECT_THAT(Fragments(*picture, 3), IsEmpty());
}

TEST_F(FrameLoaderTest, ThePictureOfAGreyFileIsGreyAndSoAreItsFragments) {
    Begin({"--all", "--set", "outputNodeIDsAs=5"});
    const auto picture = Load(Sample().Half("Y", Always(0.25)).Unsigned("objectID", Always(1)));
    EXPECT_EQ(PixelAt(*picture, 3, 1), (Pixel{0.25F, 0.25F, 0.25F, 1.0F}));
}

TEST_F(FrameLoaderTest, ValuesThatAreNotFiniteAreCountedInThePictureAlone) {
    Begin({});
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto picture = Load(Sample()
                                  .Half("R", [nan](int x, int y) { return x + y == 0 ? nan : 0.5; })
                                  .Half("G", Always(0.5))
                                  .Half("B", Always(0.5))
                                  .Half("x", Always(nan)));
    EXPECT_THAT(warnings, ElementsAre(PathOf("a.exr") +
                                      ": 1 value was not finite; NaN became 0 and infinity the "
                                      "largest number"));
    EXPECT_EQ(PixelAt(*BitmapOf("x"), 0, 0)[0], 0.0F);
}

// Deep files

Sample Deep() {
    Sample sample = Sample(2, 1);
    for (const char* channel : {"R", "G", "B", "A", "Z"})
        sample.Half(channel, Always(0));
    sample.GetPart().deep = true;
    sample.GetPart().sampleCount = [](int x, int) { return x == 0 ? 2 : 0; };
    sample.GetPart().deepValues = [](const std::string& channel, int, int, int number) {
        if (channel == "Z") return 5.0 + number;
        if (channel == "A") return number == 0 ? 0.4 : 1.0;
        if (channel.ends_with("ID")) return 7.0 + number;
        return 0.25;
    };
    return sample;
}

TEST_F(FrameLoaderTest, DeepSamplesAreFragments) {
    Begin({"--all"});
    const auto picture = Load(Deep().Unsigned("objectID", Always(0)));
    EXPECT_THAT(On(),
                ElementsAre("createRenderElementLayers", "outputNodeIDs", "createNodeIDLayer"));
    EXPECT_EQ(TextOf("nodeIDList"), "7-8");
    EXPECT_EQ(PixelAt(*picture, 0, 0)[3], 1.0F);
    const auto both = Fragments(*picture, 0);
    ASSERT_EQ(both.size(), 2U);
    EXPECT_EQ(both[0].nodeID, 7);
    EXPECT_EQ(both[0].coverage, 102);
    EXPECT_EQ(both[1].nodeID, 8);
    EXPECT_EQ(both[1].coverage, 153);
    EXPECT_THAT(Fragments(*picture, 1), IsEmpty());
}

TEST_F(FrameLoaderTest, NumbersOfDeepSamplesMayBeFloats) {
    for (const bool halfs : {false, true}) {
        Begin({"--all"});
        Sample sample = Deep();
        halfs ? sample.Half("materialID", Always(0)) : sample.Float("materialID", Always(0));
        const auto picture = Load(sample);
        EXPECT_EQ(TextOf("mtlIDList"), "7-8");
        EXPECT_EQ(Fragments(*picture, 0).at(1).mtlID, 8);
    }
}

TEST_F(FrameLoaderTest, TheZOfAPositionIsNotTheDepthOfSamples) {
    Begin({"--all"});
    // Behind Z in the file's order.
    Sample sample = Deep().Unsigned("objectID", Always(0));
    for (const char* channel : {"p.X", "p.Y", "p.Z"})
        sample.Half(channel, Always(0));
    sample.GetPart().deepValues = [](const std::string& channel, int, int, int number) {
        if (channel == "Z") return 5.0 + number;
        if (channel == "p.Z") return 5.0 - number;
        if (channel == "objectID") return 7.0 + number;
        return 1.0;
    };
    const auto picture = Load(sample);
    const auto front = Fragments(*picture, 0);
    ASSERT_EQ(front.size(), 1U) << "it is opaque";
    EXPECT_EQ(front[0].nodeID, 7);
}

TEST_F(FrameLoaderTest, FlatPartsBesideADeepPictureAreElements) {
    exr_samples::Part deep = Deep().ToPart();
    deep.name = "deep";
    exr_samples::Part flat = Sample(2, 1).Color("x", 0.25, 0.5, 0.75).ToPart();
    flat.name = "flat";
    Begin({"--beauty", "deep"});
    const auto file = Write("a.exr", exr_samples::Write({deep, flat}));
    const auto picture = loader->Load(file);
    ASSERT_EQ(Decoded().size(), 1U);
    EXPECT_EQ(PixelAt(*BitmapOf(Decoded()[0]), 1, 0), (Pixel{0.25F, 0.5F, 0.75F, 1.0F}));
}

TEST_F(FrameLoaderTest, DeepPixelsWithoutADepthAreToldAsSuch) {
    Begin({"--all"});
    Sample sample = Sample(2, 1).Picture();
    sample.GetPart().deep = true;
    EXPECT_EQ(FrameLoaderComplaint(sample),
              PathOf("a.exr") +
                  ": layer \"RGBA\" is deep and has no depth channel Z; render it with one or "
                  "flat");
}

// V-Ray

IVRayPixelBuffer* FrameBufferOf() {
    auto* frameBuffer = static_cast<IVRayFrameBuffer*>(
        host::App().renderer->GetInterface(VRAY_FRAME_BUFFER_INTERFACE));
    IVRayImage* image = frameBuffer ? frameBuffer->GetImage() : nullptr;
    return image ? static_cast<IVRayPixelBuffer*>(image->GetInterface(VRAY_PIXEL_BUFFER_INTERFACE))
                 : nullptr;
}

Words ChannelsOf(IVRayPixelBuffer& buffer) {
    Words channels;
    for (int i = 0; i < buffer.GetNumChannels(); ++i) {
        VRayChannelDescription description;
        EXPECT_TRUE(buffer.DescribeChannel(i, description));
        channels.push_back(std::string(description.name) + " " + std::to_string(description.alias) +
                           (description.type == RDCT_FLOAT ? " one" : ""));
    }
    return channels;
}

std::string Alias(int alias) {
    return " " + std::to_string(alias);
}

TEST_F(FrameLoaderTest, VRaysFrameStandsInItsFrameBuffer) {
    Begin({}, VRAY_CLASS_ID);
    EXPECT_EQ(FrameBufferOf(), nullptr) << "before the first frame";
    const auto picture = Load(Still()
                                  .Color("VRayReflection", 0.25, 0.5, 0.75)
                                  .Color("mine", 0.5, 0.5, 0.5)
                                  .Float("VRayZDepth", Always(0.5)));
    IVRayPixelBuffer* buffer = FrameBufferOf();
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(buffer->GetWidth(), 4);
    EXPECT_EQ(buffer->GetHeight(), 2);
    EXPECT_THAT(ChannelsOf(*buffer),
                ElementsAre("RGB color" + Alias(VRAY_CHANNEL_RGB),
                            "Alpha" + Alias(VRAY_CHANNEL_ALPHA) + " one",
                            "VRayReflection" + Alias(VRAY_ELEMENT_CLASSES[2].channel),
                            testing::AllOf(StartsWith("VRayZDepth "), testing::EndsWith(" one")),
                            "mine" + Alias(VRAY_CHANNEL_OF_NAME)));
    EXPECT_THAT(Decoded(), IsEmpty()) << "their pixels are in the frame buffer";
    EXPECT_TRUE(Element("mine").GetInterface(VRAY_RENDER_ELEMENT_INTERFACE));
    loader.reset();
    EXPECT_EQ(FrameBufferOf(), nullptr) << "it looks at the picture, which isn't its own";
}

TEST_F(FrameLoaderTest, VRaysElementsWithoutPixelsInAFrameAreOffInIt) {
    Begin({"--scene", Scene(R"("elements": [{"name": "VRayReflection_2", "enabled": false}])")},
          VRAY_CLASS_ID);
    const auto isOn = [](const std::string& name) {
        return Element(name).GetParamBlock(0)->GetInt(host::VRAY_ELEMENT_ENABLED);
    };
    auto picture = Load(Still()
                            .Color("VRayReflection", 1, 1, 1)
                            .Color("VRayReflection_2", 1, 1, 1)
                            .Color("VRayRefraction", 1, 1, 1));
    ASSERT_EQ(Element("VRayReflection").ClassID(), Element("VRayReflection_2").ClassID());
    EXPECT_EQ(isOn("VRayReflection"), 1);
    EXPECT_EQ(isOn("VRayReflection_2"), 0);
    EXPECT_EQ(isOn("VRayRefraction"), 1);
    picture = Load(Still().Color("VRayReflection", 1, 1, 1), "2.exr");
    EXPECT_EQ(isOn("VRayRefraction"), 0);
    picture = Load(Still().Color("VRayRefraction", 1, 1, 1), "3.exr");
    EXPECT_EQ(isOn("VRayReflection"), 0);
    EXPECT_EQ(isOn("VRayRefraction"), 1);
}

TEST_F(FrameLoaderTest, VRaysAlphaElementIsTheAlphaOfItsPicture) {
    Begin({}, VRAY_CLASS_ID);
    const auto picture = Load(Still().Half("VRayAlpha", Always(0.25)));
    IVRayPixelBuffer* buffer = FrameBufferOf();
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(buffer->GetNumChannels(), 2);
    EXPECT_EQ(buffer->FindChannel(VRAY_CHANNEL_ALPHA), 1);
}

}  // namespace
}  // namespace command
