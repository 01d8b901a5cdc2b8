#include "command/frame_elements.h"

#include <elementclasses.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iparamb2.h>
#include <vrayelements.h>
#include <vrayframebuffer.h>

#include <optional>

#include "command/arguments.h"
#include "command/failure.h"
#include "command/save_plan.h"
#include "host/application.h"
#include "host/text.h"
#include "plugin/entry.h"
#include "tests/command/fault_text.h"

namespace command {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrameElementsTest : public testing::Test {
  protected:
    FrameElementsTest()
        : arguments(std::get<SaveArguments>(ParseArguments({"save", "a.exr"}))),
          session(arguments, MakePlan(arguments), {}, nullptr, {}) {}

    FrameElements& Begin(const std::vector<std::string>& settings = {}, bool inVRay = false,
                         const SceneDescription* scene = nullptr) {
        return elements.emplace(session, scene, settings, inVRay);
    }
    int SettingOf(const host::RenderElement* element, const std::string& name) const {
        const ParamID list = Session::IdOf("layersProduction");
        for (int i = 0; i < session.Block().Count(list); ++i) {
            IParamBlock2* block = session.Block().GetReferenceTarget(list, 0, i)->GetParamBlock(0);
            if (block->GetReferenceTarget(0) != element) continue;
            return block->GetInt(ParseSetting(name + "=0", plugin::LayerParameters()).row->id);
        }
        throw std::logic_error("no settings");
    }

    SaveArguments arguments;
    Session session;
    std::optional<FrameElements> elements;
};

PassElement Pass(const std::string& name, PassKind kind = PassKind::Emission) {
    PassElement pass;
    pass.name = name;
    pass.kind = kind;
    pass.classID = PassClassID(kind);
    return pass;
}

// Diffuse colour is divided by its alpha, and a whole picture has it as its transparency.
std::vector<PassElement> PassesThatUseAlpha() {
    std::vector<PassElement> passes{Pass("DiffCol", PassKind::DiffuseColor), Pass("Beauty")};
    passes[1].classID = BEAUTY_ELEMENT;
    return passes;
}

TEST_F(FrameElementsTest, MakeNoUseOfAnAlphaThatIsNotTheirsInTheFile) {
    const std::vector<PassElement> passes = PassesThatUseAlpha();
    const auto frame = Begin({}, true).SetUp(passes, false);
    EXPECT_EQ(SettingOf(frame[0].element, "premultiply"), 1);
    EXPECT_EQ(SettingOf(frame[0].element, "transparency"), 0);
    EXPECT_EQ(SettingOf(frame[1].element, "transparency"), 0);
}

TEST_F(FrameElementsTest, UseTheirOwnAlphaOrThePicturesWhereItIsTheirsToo) {
    std::vector<PassElement> passes = PassesThatUseAlpha();
    const auto shared = Begin({}, true).SetUp(passes, true);
    EXPECT_EQ(SettingOf(shared[0].element, "premultiply"), 0);
    EXPECT_EQ(SettingOf(shared[1].element, "transparency"), 1);
    passes[0].name = "OwnCol";
    passes[1].name = "OwnBeauty";
    for (PassElement& pass : passes)
        pass.channels.alpha = ChannelRef{};
    const auto own = Begin({}, true).SetUp(passes, false);
    EXPECT_EQ(SettingOf(own[0].element, "premultiply"), 0);
    EXPECT_EQ(SettingOf(own[1].element, "transparency"), 1);
}

TEST_F(FrameElementsTest, OutsideOfVRaysFrameBufferKeepTheSettingsOfTheirClass) {
    const std::vector<PassElement> passes = PassesThatUseAlpha();
    const auto frame = Begin().SetUp(passes, false);
    EXPECT_EQ(SettingOf(frame[0].element, "premultiply"), 0);
    EXPECT_EQ(SettingOf(frame[1].element, "transparency"), 1);
}

TEST_F(FrameElementsTest, TheUsersWordOnAlphaCountsMost) {
    const std::vector<PassElement> passes = PassesThatUseAlpha();
    const auto frame = Begin({"DiffCol:premultiply=false"}, true).SetUp(passes, false);
    EXPECT_EQ(SettingOf(frame[0].element, "premultiply"), 0);
}

TEST_F(FrameElementsTest, AreMadeOnceARunWithTheEffectsSettings) {
    FrameElements& run = Begin({"Emit:blendingMode=Screen"});
    const std::vector<PassElement> passes{Pass("Emit")};
    const auto first = run.SetUp(passes, false);
    ASSERT_EQ(first.size(), 1U);
    EXPECT_EQ(SettingOf(first[0].element, "blendingMode"), 7);
    const auto second = run.SetUp(passes, false);
    EXPECT_EQ(second[0].element, first[0].element);
    EXPECT_EQ(host::App().elements[RS_Production].NumRenderElements(), 1);
}

TEST_F(FrameElementsTest, DoublesAreHiddenUnlessTheUserShowsThem) {
    std::vector<PassElement> passes{Pass("Back/Emit"), Pass("Back/Env"), Pass("Emit")};
    passes[0].isDouble = passes[1].isDouble = true;
    const auto frame = Begin({"Back/Env:visible=true"}).SetUp(passes, false);
    EXPECT_EQ(SettingOf(frame[0].element, "visible"), 0);
    EXPECT_EQ(SettingOf(frame[1].element, "visible"), 1);
    EXPECT_EQ(SettingOf(frame[2].element, "visible"), 1);
}

TEST_F(FrameElementsTest, AreUsedWhileTheyAndAllElementsAreOn) {
    FrameElements& run = Begin({"Env:enabled=false"});
    const std::vector<PassElement> passes{Pass("Emit"), Pass("Env")};
    const auto frame = run.SetUp(passes, false);
    EXPECT_TRUE(run.IsUsed(*frame[0].element));
    EXPECT_FALSE(run.IsUsed(*frame[1].element));
    frame[0].element->SetEnabled(false);
    EXPECT_FALSE(run.IsUsed(*frame[0].element));
    frame[0].element->SetEnabled(true);
    session.SetUnlessGiven("createRenderElementLayers", "false");
    EXPECT_FALSE(run.IsUsed(*frame[0].element));
}

TEST_F(FrameElementsTest, ANameOfTheUsersThatFitsNothingIsAnError) {
    FrameElements& run = Begin({"Emti:visible=false"});
    const std::vector<PassElement> passes{Pass("Emit")};
    run.SetUp(passes, false);
    EXPECT_EQ(FaultText<InputError>([&] { run.SettingsWithoutElement("a.exr"); }),
              "a.exr: there is no render element \"Emti\"; the nearest are Emit");
}

TEST_F(FrameElementsTest, AWildcardOrASceneMayFitNothing) {
    SceneDescription scene;
    scene.elementSettings.push_back(ParseElementSetting("Shadow:visible=false"));
    FrameElements& run = Begin({"Zz*:visible=false"}, false, &scene);
    const std::vector<PassElement> passes{Pass("Emit")};
    run.SetUp(passes, false);
    EXPECT_THAT(run.SettingsWithoutElement("a.exr"), ElementsAre("Shadow", "Zz*"));
    const std::vector<PassElement> more{Pass("Shadow"), Pass("Zz top")};
    run.SetUp(more, false);
    EXPECT_THAT(run.SettingsWithoutElement("a.exr"), IsEmpty());
}

// With the elements and layers that the application saved: Other, Sparks, DiffDir.
class SavedFrameElementsTest : public testing::Test {
  protected:
    SavedFrameElementsTest()
        : arguments(std::get<SaveArguments>(ParseArguments({"save", "a.exr"}))),
          scene(ReadSceneFile(VELTRANE_SOURCE_DIR "/tests/command/files/scene_of_version_3.json")),
          session(arguments, MakePlan(arguments), {}, &scene, {}) {}

    // Of the layers in the document's order: names of their elements.
    std::vector<std::string> Layers() const {
        const ParamID list = Session::IdOf("layersProduction");
        std::vector<std::string> names;
        for (int i = 0; i < session.Block().Count(list); ++i) {
            IParamBlock2* block = session.Block().GetReferenceTarget(list, 0, i)->GetParamBlock(0);
            auto* element = static_cast<IRenderElement*>(block->GetReferenceTarget(0));
            names.push_back(host::ToUtf8(element->ElementName()));
        }
        return names;
    }
    int SettingOf(int layer, const std::string& name) const {
        const ParamID list = Session::IdOf("layersProduction");
        return session.Block()
            .GetReferenceTarget(list, 0, layer)
            ->GetParamBlock(0)
            ->GetInt(ParseSetting(name + "=0", plugin::LayerParameters()).row->id);
    }

    SaveArguments arguments;
    SceneDescription scene;
    Session session;
};

TEST_F(SavedFrameElementsTest, HaveTheSavedSettingsInTheSavedOrder) {
    FrameElements run(session, &scene, {}, false);
    const std::vector<PassElement> passes{Pass("DiffDir"), Pass("New"), Pass("Other")};
    const auto frame = run.SetUp(passes, false);
    EXPECT_THAT(Layers(), ElementsAre("Other", "Sparks", "DiffDir", "New"));
    EXPECT_EQ(SettingOf(0, "visible"), 0);
    EXPECT_EQ(SettingOf(0, "blendingMode"), 7);
    EXPECT_EQ(SettingOf(2, "visible"), 1);
    EXPECT_EQ(SettingOf(2, "blendingMode"), 9);
    EXPECT_EQ(frame[0].element, host::App().elements[RS_Production].GetRenderElement(0));
    EXPECT_EQ(frame[0].element->ClassID(), PassClassID(PassKind::DiffuseDirect));
}

TEST_F(SavedFrameElementsTest, ThatAFrameLacksAreThereForTheNext) {
    FrameElements run(session, &scene, {}, false);
    const std::vector<PassElement> first{Pass("DiffDir")};
    run.SetUp(first, false);
    const std::vector<PassElement> second{Pass("Sparks")};
    const auto frame = run.SetUp(second, false);
    EXPECT_THAT(Layers(), ElementsAre("Other", "Sparks", "DiffDir"));
    EXPECT_EQ(SettingOf(1, "blendingMode"), 9);
    EXPECT_EQ(frame[0].element->ClassID(), PassClassID(PassKind::Emission));
}

TEST_F(SavedFrameElementsTest, AreFittedToNoPassAndYetTheUsersWordCounts) {
    FrameElements run(session, &scene, {"Other:blendingMode=Screen", "*:mask=true"}, true);
    std::vector<PassElement> passes{Pass("DiffDir"), Pass("Other"), Pass("Twice")};
    passes[0].isDouble = passes[2].isDouble = true;
    const auto frame = run.SetUp(passes, false);
    EXPECT_EQ(SettingOf(2, "visible"), 1);
    EXPECT_EQ(SettingOf(2, "transparency"), 1);
    EXPECT_EQ(SettingOf(0, "blendingMode"), 7);
    EXPECT_EQ(SettingOf(0, "mask"), 1);
    EXPECT_EQ(SettingOf(3, "visible"), 0) << "a new one";
    EXPECT_NE(frame[0].element->GetInterface(VRAY_RENDER_ELEMENT_INTERFACE), nullptr);
}

TEST_F(FrameElementsTest, TheSceneGivesClassSwitchAndMattes) {
    SceneDescription scene;
    SceneElement known;
    known.name = "id";
    known.elementClass = VRAY_MULTI_MATTE_ELEMENT;
    known.enabled = false;
    known.multiMatte.emplace();
    (*known.multiMatte)[0].id = 7;
    scene.elements.push_back(known);
    const std::vector<PassElement> passes{Pass("id")};
    const auto frame = Begin({}, true, &scene).SetUp(passes, false);
    host::RenderElement& element = *frame[0].element;
    EXPECT_EQ(element.ClassID(), VRAY_MULTI_MATTE_ELEMENT);
    EXPECT_FALSE(element.IsEnabled());
    EXPECT_NE(element.GetInterface(VRAY_RENDER_ELEMENT_INTERFACE), nullptr);
    auto* mattes = static_cast<IMultiMatte*>(element.GetInterface(MULTI_MATTE_INTERFACE));
    ASSERT_NE(mattes, nullptr);
    MultiMatteComponent component;
    mattes->GetComponent(0, component);
    EXPECT_TRUE(component.idOn);
    EXPECT_EQ(component.id, 7);
}

}  // namespace
}  // namespace command
