#include "plugin/layer_presets.h"

#include <array>
#include <limits>

#include "effect/class_defaults.h"
#include "effect/psd_output_layer.h"
#include "host/render_element.h"
#include "plugin/library_services.h"
#include "plugin/parameters.h"
#include "tests/effect/effect_fixture.h"
#include "tests/host/sample_objects.h"

namespace {

class LayerPresets : public EffectTest {
  protected:
    // The key of the first has leading zeros in both words; the other two have a word of it each.
    static constexpr Class_ID diffuse{0x29E, 0x1A};
    static constexpr Class_ID swapped{0x1A, 0x29E};
    static constexpr Class_ID other{0x29E, 0xFEDCBA98};

    struct Position {
        const char* name;
        ParamID id;
    };
    static constexpr std::array<Position, 10> positions{{
        {"visible", 2},
        {"blendingMode", 3},
        {"mask", 4},
        {"transparency", 5},
        {"premultiply", 6},
        {"outputAs", 7},
        {"groupWithPrevious", 8},
        {"split", 9},
        {"gammaCorrect", 10},
        {"colorCorrect", 12},
    }};
    static constexpr ParamID enabled = 1;
    static constexpr ParamID mergeDown = 11;

    LayerPresets() {
        for (int i = 0; i < LibNumberClasses(); ++i)
            Host().classes.Add(LibClassDesc(i));
    }

    static host::RenderElement& AddElement(Class_ID id, const MCHAR* name = _M("Diffuse")) {
        return Host().elements[RS_Production].Add(id, name);
    }
    // As the host makes it, in the effect's list.
    effect::PSDOutputLayer& AddLayer(host::RenderElement* element) {
        auto* layer = static_cast<effect::PSDOutputLayer*>(
            GetCOREInterface()->CreateInstance(REF_TARGET_CLASS_ID, effect::psdOutputLayerClassID));
        if (element) layer->pblock->SetValue("renderElement"_layerParam, 0, element);
        ReferenceTarget* entry = layer;
        effect->pblock->Append(effect::PSDOutput::LayerList(0), 1, &entry);
        return *layer;
    }
    effect::PSDOutputLayer& AddLayer(Class_ID id) { return AddLayer(&AddElement(id)); }

    static std::vector<ParamID> InOrder() {
        std::vector<ParamID> ids;
        for (const Position& position : positions)
            ids.push_back(position.id);
        return ids;
    }
    // All that a preset holds.
    static std::array<int, 10> Values(effect::PSDOutputLayer& layer) {
        std::array<int, 10> values{};
        for (std::size_t i = 0; i < positions.size(); ++i)
            values[i] = layer.pblock->GetInt(positions[i].id);
        return values;
    }
    static void SetValues(effect::PSDOutputLayer& layer, const std::array<int, 10>& values) {
        for (std::size_t i = 0; i < positions.size(); ++i)
            layer.pblock->SetValue(positions[i].id, 0, values[i]);
    }
    // Zeros, but for one position.
    static std::array<int, 10> Only(std::size_t position, int value = 1) {
        std::array<int, 10> values{};
        values[position] = value;
        return values;
    }
    static std::string Digits(std::size_t position) {
        std::string digits;
        for (std::size_t i = 0; i < positions.size(); ++i)
            digits += i == position ? "01000000" : "00000000";
        return digits + "01";
    }

    [[nodiscard]] std::filesystem::path Path() const { return File("config") / "veltrane.cfg"; }
    void WritePreset(const std::string& key, const std::string& digits) {
        WriteFile(Path(), "[LayerPresets]\n" + key + "=" + digits + "\n");
    }
};

TEST_F(LayerPresets, AreSavedInTheOrderOfTheRecord) {
    effect::PSDOutputLayer& layer = AddLayer(diffuse);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        SetValues(layer, Only(i));
        plugin::SaveLayerPreset(&layer);
        EXPECT_EQ(FileBytes(Path()), "[LayerPresets]\r\n0000029E0000001A=" + Digits(i) + "\r\n")
            << positions[i].name;
    }
    SetValues(layer, {1, 26, 1, 1, 1, 1, 1, 1, 1, 1});
    plugin::SaveLayerPreset(&layer);
    // 9 * 1 + 26 is 35.
    EXPECT_EQ(FileBytes(Path()),
              "[LayerPresets]\r\n0000029E0000001A=01000000"
              "1A000000010000000100000001000000010000000100000001000000010000000100000023\r\n");
}

TEST_F(LayerPresets, AreLoadedInTheOrderOfTheRecord) {
    effect::PSDOutputLayer& layer = AddLayer(diffuse);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        SetValues(layer, {1, 9, 1, 1, 1, 1, 1, 1, 1, 1});
        WritePreset("0000029E0000001A", Digits(i));
        EXPECT_NE(plugin::LoadLayerPreset(&layer), 0);
        EXPECT_EQ(Values(layer), Only(i)) << positions[i].name;
    }

    WritePreset("0000029E0000001A",
                "01000000090000000100000000000000010000000000000001000000000000000100000001000000"
                "0F");
    std::vector<ParamID> told;
    SampleTarget watcher;
    watcher.ReplaceReference(0, &layer);
    watcher.onMessage = [&](ReferenceTarget*, PartID&, RefMessage) {
        int index = 0;
        const ParamID id = layer.pblock->LastNotifyParamID(index);
        if (told.empty() || told.back() != id) told.push_back(id);
        return REF_SUCCEED;
    };
    SetValues(layer, {0, 0, 0, 1, 0, 1, 0, 1, 0, 0});
    told.clear();
    EXPECT_NE(plugin::LoadLayerPreset(&layer), 0);
    EXPECT_EQ(Values(layer), (std::array<int, 10>{1, 9, 1, 0, 1, 0, 1, 0, 1, 1}));
    EXPECT_EQ(told, InOrder());
}

TEST_F(LayerPresets, LeaveWhatTheyDoNotHold) {
    host::RenderElement& element = AddElement(diffuse);
    effect::PSDOutputLayer& layer = AddLayer(&element);
    plugin::SaveLayerPreset(&layer);
    const std::string before = FileBytes(Path());
    for (const int value : {0, 1}) {
        layer.pblock->SetValue(enabled, 0, value);
        layer.pblock->SetValue(mergeDown, 0, value);
        plugin::SaveLayerPreset(&layer);
        EXPECT_EQ(FileBytes(Path()), before);
        EXPECT_NE(plugin::LoadLayerPreset(&layer), 0);
        EXPECT_EQ(layer.pblock->GetInt(enabled), value);
        EXPECT_EQ(layer.pblock->GetInt(mergeDown), value);
        EXPECT_EQ(layer.Element(), &element);
    }
}

TEST_F(LayerPresets, AreThoseOfANewLayerOfTheClass) {
    effect::PSDOutputLayer& first = AddLayer(diffuse);
    const std::array<int, 10> values{0, 3, 1, 0, 0, 1, 1, 1, 0, 1};
    SetValues(first, values);
    plugin::SaveLayerPreset(&first);
    effect::PSDOutputLayer& second = AddLayer(&AddElement(diffuse, _M("Another name")));
    ASSERT_NE(Values(second), values);
    EXPECT_NE(plugin::Services().loadLayerPreset(&second), 0);
    EXPECT_EQ(Values(second), values);
}

TEST_F(LayerPresets, AreNotThoseOfAnotherClassOfTheSameName) {
    effect::PSDOutputLayer& layer = AddLayer(diffuse);
    SetValues(layer, {0, 3, 1, 0, 0, 1, 1, 1, 0, 1});
    plugin::SaveLayerPreset(&layer);
    for (const Class_ID id : {swapped, other}) {
        effect::PSDOutputLayer& stranger = AddLayer(id);
        const std::array<int, 10> before = Values(stranger);
        EXPECT_EQ(plugin::LoadLayerPreset(&stranger), 0);
        EXPECT_EQ(Values(stranger), before);
    }
}

TEST_F(LayerPresets, AreOneAClassAndTheLastOneStays) {
    effect::PSDOutputLayer& layer = AddLayer(diffuse);
    effect::PSDOutputLayer& stranger = AddLayer(other);
    SetValues(layer, Only(0));
    plugin::SaveLayerPreset(&layer);
    SetValues(stranger, Only(2));
    plugin::SaveLayerPreset(&stranger);
    SetValues(layer, Only(1, 9));
    plugin::SaveLayerPreset(&layer);
    EXPECT_EQ(FileBytes(Path()), "[LayerPresets]\r\n0000029E0000001A=0000000009000000" +
                                     std::string(64, '0') + "09\r\n0000029EFEDCBA98=" + Digits(2) +
                                     "\r\n");
    SetValues(stranger, {});
    EXPECT_NE(plugin::LoadLayerPreset(&stranger), 0);
    EXPECT_EQ(Values(stranger), Only(2));
}

TEST_F(LayerPresets, NeedALayerWithAnElement) {
    plugin::SaveLayerPreset(nullptr);
    EXPECT_EQ(plugin::LoadLayerPreset(nullptr), 0);
    effect::PSDOutputLayer& layer = AddLayer(nullptr);
    plugin::SaveLayerPreset(&layer);
    EXPECT_FALSE(std::filesystem::exists(Path()));
    // The key that a class without words would have.
    WritePreset("FFFFFFFFFFFFFFFF", Digits(0));
    const std::array<int, 10> before = Values(layer);
    EXPECT_EQ(plugin::LoadLayerPreset(&layer), 0);
    EXPECT_EQ(Values(layer), before);
}

TEST_F(LayerPresets, ThatAreMissingOrDamagedLeaveTheLayerAsItWas) {
    effect::PSDOutputLayer& layer = AddLayer(diffuse);
    const std::array<int, 10> before = Values(layer);
    const std::string good = Digits(0);
    EXPECT_EQ(plugin::LoadLayerPreset(&layer), 0) << "no file";
    for (const std::string& digits :
         {good.substr(2), good + "00", "02" + good.substr(2), good.substr(0, 80) + "02",
          "G" + good.substr(1), std::string()}) {
        WritePreset("0000029E0000001A", digits);
        EXPECT_EQ(plugin::LoadLayerPreset(&layer), 0) << digits;
        EXPECT_EQ(Values(layer), before) << digits;
    }
    WriteFile(Path(), "[Presets]\n0000029E0000001A=" + good + "\n");
    EXPECT_EQ(plugin::LoadLayerPreset(&layer), 0) << "another section";
}

TEST_F(LayerPresets, ThatAreMissingLeaveTheDefaultsOfTheClass) {
    // Atmosphere: Screen, without transparency.
    effect::PSDOutputLayer& layer = AddLayer(Class_ID(9, 0));
    SetValues(layer, {0, 3, 1, 1, 0, 1, 1, 1, 0, 1});
    EXPECT_EQ(effect::ApplyClassDefaults(&layer), 1);
    EXPECT_EQ(plugin::LoadLayerPreset(&layer), 0);
    EXPECT_EQ(layer.pblock->GetInt("blendingMode"_layerParam), 7);
    EXPECT_EQ(layer.pblock->GetInt("transparency"_layerParam), FALSE);
}

TEST_F(LayerPresets, StandInTheDocsAsTheyAreRead) {
    const std::string page =
        FileBytes(std::filesystem::path(VELTRANE_SOURCE_DIR) / "docs" / "configuration.md");
    const std::string opening = "```ini\n";
    const std::size_t start = page.find(opening) + opening.size();
    WriteFile(Path(), page.substr(start, page.find("```", start) - start));
    // Shadow.
    effect::PSDOutputLayer& layer = AddLayer(Class_ID(8, 0));
    SetValues(layer, {});
    EXPECT_NE(plugin::LoadLayerPreset(&layer), 0);
    EXPECT_EQ(Values(layer), (std::array<int, 10>{1, 3, 0, 1, 1, 0, 0, 0, 1, 0}));
    EXPECT_TRUE(plugin::Services().readWarningSwitches().disableVrayFrameBufferWarnings);
    EXPECT_FALSE(plugin::Services().readWarningSwitches().disableVrayProgressiveSamplerWarning);
}

TEST_F(LayerPresets, OfValuesThatNobodyMeantStillGiveADocument) {
    host::RenderElement& element = AddElement(diffuse);
    element.SetBitmap(Image(4, 2));
    effect::PSDOutputLayer& layer = AddLayer(&element);
    SetFilename(File("frame.psd"));
    auto picture = Image(4, 2);
    context.elementMgr = &Host().elements[RS_Production];
    struct Hostile {
        const char* digits;
        int blendingMode;
        int outputAs;
    };
    for (const auto& [digits, blendingMode, outputAs] :
         // 999 is 0x3E7.
         {Hostile{"01000000E703000000000000000000000000000000000000000000000000000000000000"
                  "00000000EB",
                  999, 0},
          {"FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"
           "FFFFFFFFD8",
           -1, -1},
          {"0000008000000080000000800000008000000080000000800000008000000080000000800000"
           "008000",
           std::numeric_limits<int>::min(), std::numeric_limits<int>::min()}}) {
        WritePreset("0000029E0000001A", digits);
        ASSERT_NE(plugin::LoadLayerPreset(&layer), 0) << digits;
        EXPECT_EQ(layer.pblock->GetInt("blendingMode"_layerParam), blendingMode);
        EXPECT_EQ(layer.pblock->GetInt("outputAs"_layerParam), outputAs);
        for (const int depth : {8, 32}) {
            Set("bitDepth"_param, depth);
            std::filesystem::remove(File("frame.psd"));
            RenderFrame(picture.get());
            EXPECT_TRUE(Exists("frame.psd")) << digits << " at " << depth;
        }
    }
}

}  // namespace
