// Scene files with the effect in them that were cut or changed by someone: each is opened as it
// stands, or is refused in one line with the scene as it was.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "effect/scene_layer_choice.h"
#include "effect/sync_render_elements.h"
#include "host/application.h"
#include "host/capture_scene.h"
#include "host/documents.h"
#include "host/host_renderer.h"
#include "host/input_error.h"
#include "host/scene_text_writer.h"
#include "plugin/entry.h"
#include "plugin/parameters.h"
#include "tests/host/temporary_folder.h"

namespace hostile_scene_files {
namespace {

using host::App;
using nlohmann::json;

class HostileSceneFiles : public testing::Test {
  protected:
    HostileSceneFiles() {
        host::ResetApplication();
        App().settings.randomSeed = 1;
        plugin::Attach();
        for (int i = 0; i < LibNumberClasses(); ++i)
            App().classes.Add(LibClassDesc(i));
        AddContent();
        host::SaveScene(good);
        text = Bytes(good);
        state = State();
    }
    ~HostileSceneFiles() override { host::ResetApplication(); }

    static void AddContent() {
        host::Scene& scene = App().scene;
        host::Node& head = scene.AddNode(_M("Lamp"));
        head.SetGroupHead(true);
        host::Node& camera = scene.AddNode(_M("Camera"));
        camera.SetKind(host::NodeKind::Camera);
        camera.SetLens(host::CameraLens{45.0, 0.0, 0.5, 100.0});
        camera.SetTransform(Matrix3());
        host::Node& bulb = scene.AddNode(_M("Bulb \xd83d!"), &head);
        bulb.SetGroupMember(true);
        bulb.SetUserProperties(_M("PSDZDepthMakeOpaque = true"));
        camera.SetParent(&head);
        scene.AssignRenderIDs();
        host::SceneLayer& top = scene.AddLayer(_M("Props"));
        host::SceneLayer& inner = scene.AddLayer(_M("Old"), &top);
        bulb.SetLayer(&inner);
        scene.AddSelectionSet(_M("Set"), {&bulb, &head});
        for (const Class_ID& id : {VRAY_MULTI_MATTE_ELEMENT, Class_ID(4, 0)})
            App().elements[RS_Production].Add(id, _M("Element"));
        host::RenderElement& matte = *App().elements[RS_Production].GetRenderElement(0);
        matte.SetParameter(host::VRAY_ELEMENT_ENABLED, 0);
        MultiMatteComponent component;
        component.idOn = true;
        component.id = 3;
        INode* node = &bulb;
        component.nodes.Append(1, &node);
        matte.SetMultiMatte(1, component);
        App().renderer.reset(new host::HostRenderer(VRAY_CLASS_ID));
        App().settings.render.camera = std::make_shared<host::TargetReference>(&camera);

        auto* output = static_cast<effect::PSDOutput*>(LibClassDesc(0)->Create(FALSE));
        App().effects.emplace_back(output);
        effect::SyncRenderElements(*output, effect::PSDOutput::productionLayers);
        ReferenceTarget* objects[] = {&bulb, nullptr};
        output->pblock->Append("objectList"_param, 2, objects);
        output->pblock->SetValue("filename"_param, 0, _M("shot.psd"));
        effect::SetSceneLayerOn(
            &inner, static_cast<DWORD>(output->pblock->GetInt("sceneLayerAppDataChunkId"_param)),
            false);
    }

    static std::string Bytes(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static std::string State() { return host::WriteScene(host::CaptureScene()); }

    // The fault in opening a file of that text, empty when there was none.
    std::string Open(const std::string& changed) const {
        std::ofstream(path, std::ios::binary) << changed;
        try {
            host::OpenScene(path);
        } catch (const host::InputError& fault) {
            return fault.what();
        }
        return {};
    }
    void ExpectRefused(const std::string& changed, const std::string& what) const {
        const std::string fault = Open(changed);
        ASSERT_EQ(fault.substr(0, path.size() + 2), path + ": ") << what;
        ASSERT_EQ(fault.find('\n'), std::string::npos) << what;
        ASSERT_EQ(Bytes(path), changed) << what;
        ASSERT_EQ(State(), state) << what;
    }

    TemporaryFolder folder;
    std::string good = (folder.path / "good.json").string();
    std::string path = (folder.path / "a.json").string();
    std::string text;
    std::string state;
};

TEST_F(HostileSceneFiles, TheWholeFileIsTheScene) {
    EXPECT_EQ(Open(text), "");
    EXPECT_EQ(State(), state);
    EXPECT_GT(text.size(), 4000U);
}

// The end of the line behind the last brace is no part of it. That no text is read that ends at any
// other byte is seen in the tests of the reader.
TEST_F(HostileSceneFiles, AFileThatEndsTooEarlyIsRefused) {
    for (std::size_t size = 0; size + 1 < text.size() && !HasFatalFailure(); size += 61)
        ExpectRefused(text.substr(0, size), "cut to " + std::to_string(size));
}

TEST_F(HostileSceneFiles, ALaterVersionIsRefused) {
    for (const char* version : {"3", "2147483647", "0", "-1", "2.5", "1e300", "null", "\"2\""}) {
        std::string changed = text;
        const std::string key = "\"veltrane\": ";
        changed.replace(changed.find(key) + key.size(), 1, version);
        ExpectRefused(changed, version);
    }
}

// Every value, each in turn, becomes some of other kinds, and goes.
class ChangedValues : public HostileSceneFiles {
  protected:
    void Try(const std::string& what) {
        const std::string changed = whole.dump();
        const std::string fault = Open(changed);
        ++tried;
        if (fault.empty()) {
            ++opened;
            // It is a scene like any other.
            const std::string now = State();
            ASSERT_EQ(Open(now), "") << what;
            ASSERT_EQ(State(), now) << what;
            ASSERT_EQ(Open(text), "") << what;
            return;
        }
        ASSERT_EQ(fault.find('\n'), std::string::npos) << what << fault;
        ASSERT_EQ(fault.substr(0, path.size() + 2), path + ": ") << what;
        ASSERT_EQ(Bytes(path), changed) << what;
        ASSERT_EQ(State(), state) << what << ": " << fault;
    }
    void Change(json& value, const std::string& place) {
        static const json others[] = {
            nullptr,
            true,
            -1,
            0,
            1,
            2,
            4,
            6,
            9,
            1e300,
            0.5,
            "x",
            "",
            json::array(),
            json::object(),
            json::array({1, 2}),
            json::array({json::array()}),
            {{"utf16", "d800"}},
            {{"block", {{"id", 0}, {"version", 101}, {"parameters", json::array()}}}}};
        const json before = value;
        // All kinds at every place would take too long.
        constexpr std::size_t stride = 9;
        for (std::size_t i = places++ % stride; i < std::size(others); i += stride) {
            if (HasFatalFailure()) return;
            if (others[i] == before) continue;
            value = others[i];
            Try(place + " as " + others[i].dump());
        }
        value = before;
        std::vector<std::string> names;
        for (auto member = value.begin(); value.is_object() && member != value.end(); ++member)
            names.push_back(member.key());
        for (const std::string& key : names) {
            if (HasFatalFailure()) return;
            json member = std::move(value[key]);
            value.erase(key);
            Try(place + " without " + key);
            value[key] = std::move(member);
            Change(value[key], place + "." + key);
        }
        // Entries are alike, and the block's parameters are many.
        constexpr std::size_t mostEntries = 12;
        for (std::size_t i = 0; value.is_array() && i < std::min(value.size(), mostEntries); ++i) {
            if (HasFatalFailure()) return;
            json all = value;
            value.erase(value.begin() + static_cast<std::ptrdiff_t>(i));
            Try(place + " without " + std::to_string(i));
            value = all;
            value.push_back(value[i]);
            Try(place + " with " + std::to_string(i) + " twice");
            value = all;
            Change(value[i], place + "[" + std::to_string(i) + "]");
        }
    }

    json whole = json::parse(text);
    std::size_t places = 0;
    int tried = 0;
    int opened = 0;
};

TEST_F(ChangedValues, EachIsTakenOrRefusedAndNeverHalf) {
    Change(whole, "");
    EXPECT_GT(tried, 700);
    EXPECT_GT(opened, 70);
    EXPECT_LT(opened, tried / 2);
}

}  // namespace
}  // namespace hostile_scene_files
