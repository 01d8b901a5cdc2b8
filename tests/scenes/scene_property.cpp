// A scene that changes at random under the effect: nodes, layers, sets, render elements and the
// effect's own lists are edited, taken back, done again, saved, opened, merged and copied, and
// after each step everything must fit together. VELTRANE_PROPERTY_SEED adds a run with that seed,
// VELTRANE_PROPERTY_STEPS changes how many steps a run has.
#include <gtest/gtest.h>
#include <hold.h>
#include <ilayermanager.h>
#include <tab.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <ostream>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "effect/element_classes.h"
#include "effect/psd_output.h"
#include "effect/psd_output_layer.h"
#include "effect/scene_layer_choice.h"
#include "effect/scene_sync.h"
#include "effect/selection_set_list.h"
#include "effect/sync_render_elements.h"
#include "host/application.h"
#include "host/capture_scene.h"
#include "host/documents.h"
#include "host/input_error.h"
#include "host/scene_text_writer.h"
#include "host/text.h"
#include "plugin/entry.h"
#include "plugin/parameters.h"
#include "tests/host/temporary_folder.h"

namespace scene_property {
namespace {

using effect::PSDOutput;
using effect::PSDOutputLayer;
using host::App;
using host::Node;
using host::RenderElement;
using host::SceneLayer;

constexpr ParamID objectList = "objectList"_param;
constexpr ParamID setList = "namedSelectionSetsList"_param;

struct Run {
    std::uint64_t seed;
    // All edits of the scene are steps that can be undone, and an undo must give exactly the scene
    // of before. Otherwise edits without a hold come between the steps, which must stay harmless.
    bool exact;
};

void PrintTo(const Run& run, std::ostream* out) {
    *out << "seed " << run.seed << (run.exact ? " exact" : " mixed");
}

int StepsOfARun() {
    const char* steps = std::getenv("VELTRANE_PROPERTY_STEPS");
    return steps ? std::atoi(steps) : 3000;
}

// Which scene layers each effect's number has switched off, kept beside the layers themselves.
using Choices = std::map<std::pair<const SceneLayer*, int>, bool>;

struct Moment {
    std::string scene;
    Choices choices;
};

class SceneProperty : public testing::TestWithParam<Run> {
  protected:
    SceneProperty() : random(GetParam().seed) {
        host::ResetApplication();
        App().settings.randomSeed = GetParam().seed;
        plugin::Attach();
        for (int i = 0; i < LibNumberClasses(); ++i)
            App().classes.Add(LibClassDesc(i));
        AddEffect();
    }
    ~SceneProperty() override { host::ResetApplication(); }

    static host::Scene& Scene() { return App().scene; }
    static host::RenderElementManager& Elements() {
        return App().elements.at(static_cast<std::size_t>(App().settings.render.current));
    }
    static int List() {
        return App().settings.render.current == RS_Draft ? PSDOutput::secondaryLayers
                                                         : PSDOutput::productionLayers;
    }
    bool IsExact() const { return GetParam().exact; }

    // Below `count`, which is above 0.
    std::size_t Pick(std::size_t count) { return static_cast<std::size_t>(random() % count); }
    bool Chance(int percent) { return Pick(100) < static_cast<std::size_t>(percent); }
    template <class List>
    auto& AnyOf(List& list) {
        return list[Pick(list.size())];
    }
    MSTR AnyName() {
        static const std::vector<std::string> names = {"Box",  "Box001",   "box", "0",
                                                       "Ball", "\xc3\xbc", "",    "a/b"};
        return host::FromUtf8(AnyOf(names));
    }
    // Not empty.
    MSTR AnySetName() {
        const MSTR name = AnyName();
        return name.isNull() ? MSTR(_M("empty")) : name;
    }
    Node* AnyNode() {
        const int count = Scene().NumNodes();
        return count > 0 ? Scene().GetNode(static_cast<int>(Pick(static_cast<std::size_t>(count))))
                         : nullptr;
    }
    SceneLayer* AnyLayer() {
        const auto& layers = Scene().Layers();
        return layers.empty() ? nullptr : AnyOf(layers);
    }
    RenderElement* AnyElement() {
        const int count = Elements().NumRenderElements();
        return count > 0 ? Elements().GetRenderElement(
                               static_cast<int>(Pick(static_cast<std::size_t>(count))))
                         : nullptr;
    }
    static std::vector<PSDOutput*> Effects() {
        std::vector<PSDOutput*> effects;
        for (const auto& each : App().effects)
            effects.push_back(static_cast<PSDOutput*>(each.get()));
        return effects;
    }
    PSDOutput& AnyEffect() { return *Effects()[Pick(App().effects.size())]; }
    static int ChunkOf(const PSDOutput& output) {
        return output.pblock->GetInt("sceneLayerAppDataChunkId"_param);
    }
    static std::multiset<std::string> SetsOn(const PSDOutput& output) {
        std::multiset<std::string> names;
        for (int i = 0; i < output.pblock->Count(setList); ++i)
            names.insert(host::ToUtf8(output.pblock->GetStr(setList, 0, i)));
        return names;
    }
    static bool IsOnEverywhere(const MSTR& set) {
        const auto effects = Effects();
        return std::all_of(effects.begin(), effects.end(), [&](const PSDOutput* each) {
            return effect::IsSelectionSetOn(effect::ListedSelectionSets(*each->pblock), set);
        });
    }

    // Effects

    void AddEffect() {
        auto* made = static_cast<PSDOutput*>(LibClassDesc(0)->Create(FALSE));
        App().effects.emplace_back(made);
        for (const SceneLayer* layer : Scene().Layers())
            choices[{layer, ChunkOf(*made)}] = true;
        EXPECT_EQ(SetsOn(*made).size(), Scene().SelectionSets().size());
        ForgetSteps();
    }
    void CopyEffect() {
        PSDOutput& original = AnyEffect();
        DefaultRemapDir remap;
        auto* copy = static_cast<PSDOutput*>(remap.CloneRef(&original));
        App().effects.emplace_back(copy);
        EXPECT_EQ(ChunkOf(*copy), ChunkOf(original));
        EXPECT_EQ(SetsOn(*copy), SetsOn(original));
        EXPECT_EQ(ObjectsOf(*copy), ObjectsOf(original));
        for (const int list : {PSDOutput::productionLayers, PSDOutput::secondaryLayers}) {
            ASSERT_EQ(copy->LayerCount(list), original.LayerCount(list));
            for (int i = 0; i < copy->LayerCount(list); ++i) {
                const PSDOutputLayer* layer = copy->Layer(list, i);
                const PSDOutputLayer* ofOriginal = original.Layer(list, i);
                ASSERT_EQ(layer == nullptr, ofOriginal == nullptr);
                if (!layer) continue;
                EXPECT_NE(layer, ofOriginal);
                EXPECT_EQ(layer->Element(), ofOriginal->Element());
                EXPECT_EQ(layer->pblock->GetInt("outputAs"_layerParam),
                          ofOriginal->pblock->GetInt("outputAs"_layerParam));
            }
        }
        ForgetSteps();
    }
    void RemoveEffect() {
        auto& effects = App().effects;
        effects.erase(effects.begin() + static_cast<std::ptrdiff_t>(Pick(effects.size())));
        if (IsExact()) ForgetSteps();
    }

    // What one edit may be. Each does what it can, or nothing.

    void EditNode() {
        Node* node = AnyNode();
        if (!node || Chance(Scene().NumNodes() < 30 ? 25 : 5)) {
            Scene().AddNode(AnyName(), Chance(50) ? node : nullptr);
            return;
        }
        switch (Pick(9)) {
            case 0:
                node->SetName(AnyName());
                break;
            case 1:
                node->SetHidden(Chance(50));
                break;
            case 2:
                node->SetParent(Chance(80) ? AnyNode() : nullptr);
                break;
            case 3:
                node->SetLayer(Chance(80) ? AnyLayer() : nullptr);
                break;
            case 4:
                node->SetGroupHead(Chance(50));
                break;
            case 5:
                node->SetGroupMember(Chance(50));
                break;
            case 6:
                node->SetKind(Chance(50) ? host::NodeKind::Light : host::NodeKind::Geometry);
                break;
            default:
                if (Chance(60)) Scene().Remove(*node);
                break;
        }
    }
    void EditLayer() {
        SceneLayer* layer = AnyLayer();
        if (!layer || Chance(Scene().Layers().size() < 12 ? 30 : 5)) {
            SceneLayer& made = Scene().AddLayer(AnyName(), Chance(50) ? layer : nullptr);
            for (const PSDOutput* each : Effects())
                choices[{&made, ChunkOf(*each)}] = true;
            return;
        }
        switch (Pick(4)) {
            case 0:
                layer->SetName(AnyName());
                break;
            case 1:
                layer->SetHidden(Chance(50));
                break;
            case 2:
                layer->SetParent(Chance(70) ? AnyLayer() : nullptr);
                break;
            default:
                Scene().Remove(*layer);
                break;
        }
    }
    void ChooseLayer() {
        SceneLayer* layer = AnyLayer();
        if (!layer) return;
        const int chunk = ChunkOf(AnyEffect());
        const bool on = Chance(50);
        effect::SetSceneLayerOn(layer, static_cast<DWORD>(chunk), on);
        choices[{layer, chunk}] = on;
    }
    void EditSet() {
        const auto& sets = Scene().SelectionSets();
        if (sets.empty() || Chance(sets.size() < 6 ? 35 : 10)) {
            std::vector<Node*> nodes;
            for (int i = 0; i < 4; ++i)
                nodes.push_back(AnyNode());
            const MSTR name = AnySetName();
            std::vector<bool> before;
            const bool isThere = std::any_of(sets.begin(), sets.end(),
                                             [&](const auto& set) { return set.name == name; });
            for (const PSDOutput* each : Effects())
                before.push_back(
                    effect::IsSelectionSetOn(effect::ListedSelectionSets(*each->pblock), name));
            Scene().AddSelectionSet(name, nodes);
            std::size_t index = 0;
            for (const PSDOutput* each : Effects()) {
                EXPECT_EQ(
                    effect::IsSelectionSetOn(effect::ListedSelectionSets(*each->pblock), name),
                    !isThere || before[index])
                    << "an edit changes no choice, and a new set is on: "
                    << host::ToUtf8(name.data());
                ++index;
            }
            return;
        }
        const MSTR name = AnyOf(sets).name;
        if (Chance(40)) {
            // A set that was off is on when its deletion is taken back: it is created then.
            if (!IsExact() || IsOnEverywhere(name)) Scene().RemoveSelectionSet(name);
            return;
        }
        const MSTR newName = AnySetName();
        std::vector<bool> before;
        for (const PSDOutput* each : Effects())
            before.push_back(
                effect::IsSelectionSetOn(effect::ListedSelectionSets(*each->pblock), name));
        if (!Scene().RenameSelectionSet(name, newName)) return;
        std::size_t index = 0;
        for (const PSDOutput* each : Effects()) {
            const bool isOn =
                effect::IsSelectionSetOn(effect::ListedSelectionSets(*each->pblock), newName);
            // A step that is undone after edits without a hold may bring a name back that no set
            // has any more.
            EXPECT_TRUE(IsExact() ? isOn == before[index] : isOn || !before[index]);
            ++index;
        }
    }
    void ChooseSet() {
        const auto& sets = Scene().SelectionSets();
        if (sets.empty()) return;
        const MSTR name = AnyOf(sets).name;
        IParamBlock2& block = *AnyEffect().pblock;
        for (int i = block.Count(setList) - 1; i >= 0; --i) {
            if (MSTR(block.GetStr(setList, 0, i)) != name) continue;
            block.Delete(setList, i, 1);
            return;
        }
        const MCHAR* text = name.data();
        block.Append(setList, 1, &text);
    }
    void EditObjects() {
        IParamBlock2& block = *AnyEffect().pblock;
        const int count = block.Count(objectList);
        if (Node* node = AnyNode(); node && Chance(count < 10 ? 60 : 20)) {
            ReferenceTarget* entry = node;
            block.Append(objectList, 1, &entry);
        } else if (count > 0 && Chance(60)) {
            block.Delete(objectList, static_cast<int>(Pick(static_cast<std::size_t>(count))), 1);
        } else {
            effect::CleanupDeletedObjects(block);
            for (int i = 0; i < block.Count(objectList); ++i)
                EXPECT_NE(block.GetINode(objectList, 0, i), nullptr);
        }
    }
    void EditElement() {
        RenderElement* element = AnyElement();
        if (!element || Chance(Elements().NumRenderElements() < 8 ? 40 : 10)) {
            const auto classes = effect::ElementClasses();
            const Class_ID id = Chance(80) ? classes[Pick(classes.size())].id : Class_ID(9, 9);
            Elements().Add(id, AnyName());
        } else if (Chance(40)) {
            Elements().Remove(element);
        } else if (Chance(50)) {
            element->SetElementName(AnyName().data());
        } else {
            element->SetEnabled(Chance(50));
        }
    }
    void EditEffect() {
        PSDOutput& output = AnyEffect();
        const int count = output.LayerCount(List());
        PSDOutputLayer* layer =
            count > 0
                ? output.Layer(List(), static_cast<int>(Pick(static_cast<std::size_t>(count))))
                : nullptr;
        switch (Pick(4)) {
            case 0:
                output.pblock->SetValue("autoSort"_param, 0, Chance(50) ? TRUE : FALSE);
                break;
            case 1:
                output.pblock->SetValue("bitDepth"_param, 0, Chance(50) ? 32 : 8);
                break;
            case 2:
                if (layer) layer->pblock->SetValue("outputAs"_layerParam, 0, Chance(30) ? 1 : 0);
                break;
            default:
                if (layer)
                    layer->pblock->SetValue("visible"_layerParam, 0, Chance(50) ? TRUE : FALSE);
                break;
        }
    }
    void EditOnce() {
        using Edit = void (SceneProperty::*)();
        static constexpr std::pair<const char*, Edit> edits[] = {
            {"node", &SceneProperty::EditNode},       {"node", &SceneProperty::EditNode},
            {"layer", &SceneProperty::EditLayer},     {"choose layer", &SceneProperty::ChooseLayer},
            {"set", &SceneProperty::EditSet},         {"choose set", &SceneProperty::ChooseSet},
            {"objects", &SceneProperty::EditObjects}, {"element", &SceneProperty::EditElement},
            {"effect", &SceneProperty::EditEffect}};
        const auto& [name, edit] = edits[Pick(std::size(edits))];
        Note(name);
        (this->*edit)();
    }

    // Steps, and what they must bring back

    class Mark : public RestoreObj {
        void Restore(int) override {}
        void Redo() override {}
    };

    Moment Now() const { return {SceneText(), choices}; }
    void ForgetSteps() {
        App().undo.Clear();
        undone.clear();
        done.clear();
    }
    void HeldEdits() {
        const Moment before = Now();
        theHold.Begin();
        theHold.Put(new Mark);
        for (std::size_t i = 1 + Pick(3); i > 0; --i)
            EditOnce();
        if (Chance(15)) {
            Note("cancel");
            theHold.Cancel();
            choices = before.choices;
            ExpectMoment(before);
            return;
        }
        theHold.Accept(_M("Edit"));
        done.push_back({before, Now()});
        undone.clear();
    }
    void UnheldEdit() {
        Note("unheld");
        EditOnce();
        // What it left in the stack by itself is no step of this run's.
        if (IsExact()) {
            ForgetSteps();
        } else {
            done.clear();
            undone.clear();
        }
    }
    void UndoSome() {
        for (std::size_t i = 1 + Pick(6); i > 0 && App().undo.CanUndo(); --i) {
            Note("undo");
            ASSERT_TRUE(App().undo.Undo());
            if (done.empty()) {
                LoseTrack();
                continue;
            }
            undone.push_back(done.back());
            done.pop_back();
            choices = undone.back().first.choices;
            ExpectMoment(undone.back().first);
        }
    }
    void RedoSome() {
        for (std::size_t i = 1 + Pick(6); i > 0 && App().undo.CanRedo(); --i) {
            Note("redo");
            ASSERT_TRUE(App().undo.Redo());
            if (undone.empty()) {
                LoseTrack();
                continue;
            }
            done.push_back(undone.back());
            undone.pop_back();
            choices = done.back().second.choices;
            ExpectMoment(done.back().second);
        }
    }
    void ExpectMoment(const Moment& moment) const {
        if (IsExact()) {
            ASSERT_EQ(SceneText(), moment.scene);
        }
    }
    // After steps of which the run doesn't know what they hold.
    void LoseTrack() {
        done.clear();
        undone.clear();
        RereadChoices();
    }
    void RereadChoices() {
        choices.clear();
        for (SceneLayer* layer : Scene().Layers()) {
            for (const PSDOutput* each : Effects()) {
                const int chunk = ChunkOf(*each);
                choices[{layer, chunk}] = effect::IsSceneLayerOn(layer, static_cast<DWORD>(chunk));
            }
        }
    }

    // Whole scenes

    static std::string FileText() { return host::WriteScene(host::CaptureScene()); }
    std::string Path(const char* name) const { return (folder.path / name).string(); }
    void SaveAndOpen() {
        Note("save, open");
        const std::string before = FileText();
        const std::vector<std::string> chosen = ChoicesInOrder();
        host::SaveScene(Path("a.json"));
        if (Chance(30)) host::NewScene();
        host::OpenScene(Path("a.json"));
        ASSERT_EQ(FileText(), before);
        LoseTrack();
        ASSERT_EQ(ChoicesInOrder(), chosen);
        ASSERT_FALSE(App().undo.CanUndo());
    }
    void OpenHalf() {
        Note("open half a file");
        const std::string text = FileText();
        std::ofstream(Path("half.json"), std::ios::binary) << text.substr(0, Pick(text.size() - 2));
        const std::string before = SceneText();
        EXPECT_THROW(host::OpenScene(Path("half.json")), host::InputError);
        EXPECT_THROW(host::MergeScene(Path("half.json")), host::InputError);
        ASSERT_EQ(SceneText(), before);
    }
    void Merge() {
        if (!std::filesystem::exists(Path("a.json")) || Scene().NumNodes() > 30) return;
        Note("merge");
        RereadChoices();
        const Choices before = choices;
        host::MergeScene(Path("a.json"));
        RereadChoices();
        for (const auto& [key, on] : before)
            EXPECT_EQ(choices.at(key), on);
        while (App().effects.size() > 2)
            App().effects.pop_back();
        done.clear();
        undone.clear();
    }
    void Empty() {
        Note("new");
        Chance(50) ? host::NewScene() : host::ResetScene();
        EXPECT_EQ(Scene().NumNodes(), 0);
        EXPECT_FALSE(App().undo.CanUndo());
        choices.clear();
        AddEffect();
    }

    // What must hold at all times

    std::vector<std::string> ChoicesInOrder() const {
        std::vector<std::string> chosen;
        for (SceneLayer* layer : Scene().Layers()) {
            std::string& line = chosen.emplace_back(host::ToUtf8(layer->GetName().data()));
            for (const PSDOutput* each : Effects())
                line.append(choices.at({layer, ChunkOf(*each)}) ? " on" : " off");
        }
        return chosen;
    }
    static std::vector<INode*> ObjectsOf(const PSDOutput& output) {
        std::vector<INode*> nodes;
        for (int i = 0; i < output.pblock->Count(objectList); ++i)
            nodes.push_back(output.pblock->GetINode(objectList, 0, i));
        return nodes;
    }
    // Everything but the effects' lists of layers, by the very objects.
    static std::string SceneText() {
        std::ostringstream text;
        const auto nodes = [&](const auto& list) {
            for (const auto* node : list)
                text << ' ' << node;
            text << '\n';
        };
        const auto childrenOf = [](INode& node) {
            std::vector<const INode*> children;
            for (int i = 0; i < node.NumberOfChildren(); ++i)
                children.push_back(node.GetChildNode(i));
            return children;
        };
        text << "root";
        nodes(childrenOf(Scene().Root()));
        for (int i = 0; i < Scene().NumNodes(); ++i) {
            Node& node = *Scene().GetNode(i);
            text << &node << ' ' << host::ToUtf8(node.GetName()) << ' ' << node.IsHidden()
                 << node.IsGroupHead() << node.IsGroupMember() << static_cast<int>(node.Kind())
                 << ' ' << node.GetParentNode() << " in " << node.GetLayer() << ':';
            nodes(childrenOf(node));
        }
        for (SceneLayer* layer : Scene().Layers()) {
            text << "layer " << layer << ' ' << host::ToUtf8(layer->GetName().data()) << ' '
                 << layer->IsHidden() << " in " << layer->GetParentLayer();
            for (int i = 0; i < layer->GetNumOfChildLayers(); ++i)
                text << ' ' << layer->GetChildLayer(i);
            text << ':';
            nodes(NodesOf(*layer));
        }
        for (const host::SelectionSet& set : Scene().SelectionSets()) {
            text << "set " << host::ToUtf8(set.name.data()) << ':';
            nodes(set.nodes);
        }
        for (auto& manager : App().elements) {
            text << "elements\n";
            for (int i = 0; i < manager.NumRenderElements(); ++i) {
                const RenderElement& element = *manager.GetRenderElement(i);
                text << &element << ' ' << host::ToUtf8(element.ElementName()) << ' '
                     << element.IsEnabled() << '\n';
            }
        }
        for (const PSDOutput* each : Effects()) {
            text << "effect " << each << " objects";
            nodes(ObjectsOf(*each));
            text << "sets";
            for (const std::string& name : SetsOn(*each))
                text << ' ' << name << ',';
            text << '\n';
        }
        return text.str();
    }
    static std::vector<const INode*> NodesOf(SceneLayer& layer) {
        Tab<INode*> tab;
        layer.Nodes(tab);
        std::vector<const INode*> nodes;
        for (int i = 0; i < tab.Count(); ++i)
            nodes.push_back(tab[i]);
        return nodes;
    }

    void CheckScene() const {
        std::map<const INode*, int> places;
        std::map<std::basic_string<MCHAR>, Node*> oldest;
        for (int i = 0; i < Scene().NumNodes(); ++i) {
            Node& node = *Scene().GetNode(i);
            EXPECT_TRUE(node.IsInScene());
            INode* parent = node.GetParentNode();
            int times = 0;
            for (int child = 0; child < parent->NumberOfChildren(); ++child)
                times += parent->GetChildNode(child) == &node ? 1 : 0;
            EXPECT_EQ(times, 1);
            EXPECT_TRUE(parent == &Scene().Root() || static_cast<Node*>(parent)->IsInScene());
            oldest.emplace(node.GetName(), &node);
            if (SceneLayer* layer = node.GetLayer()) {
                const auto nodes = NodesOf(*layer);
                EXPECT_EQ(std::count(nodes.begin(), nodes.end(), &node), 1);
                EXPECT_TRUE(layer->IsInScene());
            }
        }
        for (const auto& [name, node] : oldest)
            EXPECT_EQ(Scene().FindNode(MSTR(name.c_str())), node);
        std::size_t below = 0;
        for (SceneLayer* layer : Scene().Layers()) {
            EXPECT_TRUE(layer->IsInScene());
            for (const INode* node : NodesOf(*layer)) {
                EXPECT_EQ(static_cast<const Node*>(node)->GetLayer(), layer);
                EXPECT_TRUE(static_cast<const Node*>(node)->IsInScene());
            }
            for (int i = 0; i < layer->GetNumOfChildLayers(); ++i)
                EXPECT_EQ(layer->GetChildLayer(i)->GetParentLayer(), layer);
            below += static_cast<std::size_t>(layer->GetNumOfChildLayers());
            if (!layer->GetParentLayer()) ++below;
        }
        EXPECT_EQ(below, Scene().Layers().size());
        std::set<std::string> names;
        for (const host::SelectionSet& set : Scene().SelectionSets()) {
            EXPECT_TRUE(names.insert(host::ToUtf8(set.name.data())).second);
            const std::set<Node*> once(set.nodes.begin(), set.nodes.end());
            EXPECT_EQ(once.size(), set.nodes.size());
            for (const Node* node : set.nodes)
                EXPECT_TRUE(node->IsInScene());
        }
    }
    void CheckEffects() const {
        for (const PSDOutput* each : Effects()) {
            for (INode* node : ObjectsOf(*each)) {
                EXPECT_TRUE(!node || static_cast<Node*>(node)->IsInScene());
            }
            const int chunk = ChunkOf(*each);
            EXPECT_GE(chunk, 100);
            for (SceneLayer* layer : Scene().Layers()) {
                EXPECT_EQ(effect::IsSceneLayerOn(layer, static_cast<DWORD>(chunk)),
                          choices.at({layer, chunk}));
            }
            for (const int list : {PSDOutput::productionLayers, PSDOutput::secondaryLayers}) {
                for (int i = 0; i < each->LayerCount(list); ++i) {
                    const PSDOutputLayer* layer = each->Layer(list, i);
                    if (layer && layer->Element()) {
                        EXPECT_TRUE(IsListed(layer->Element())) << "it is the manager's";
                    }
                }
            }
        }
    }
    static bool IsListed(const IRenderElement* element) {
        return std::any_of(App().elements.begin(), App().elements.end(), [&](auto& manager) {
            for (int i = 0; i < manager.NumRenderElements(); ++i) {
                if (manager.GetRenderElement(i) == element) return true;
            }
            return false;
        });
    }

    void Synchronise() {
        Note("sync");
        for (PSDOutput* each : Effects()) {
            effect::SyncRenderElements(*each, List());
            CheckLayers(*each);
            effect::SyncSelectionSets(*each->pblock);
            CheckSets(*each);
        }
        if (IsExact()) {
            // A list that was in step leaves no step.
            EXPECT_EQ(App().undo.CanUndo(), !done.empty());
        } else {
            done.clear();
            undone.clear();
        }
    }
    void CheckLayers(const PSDOutput& output) const {
        std::set<const IRenderElement*> met;
        std::vector<std::pair<bool, int>> order;
        for (int i = 0; i < output.LayerCount(List()); ++i) {
            const PSDOutputLayer* layer = output.Layer(List(), i);
            ASSERT_NE(layer, nullptr);
            IRenderElement* element = layer->Element();
            ASSERT_NE(element, nullptr);
            EXPECT_TRUE(met.insert(element).second) << "two layers stand for one element";
            order.emplace_back(layer->pblock->GetInt("outputAs"_layerParam) == 1,
                               effect::ElementRank(element->ClassID()));
        }
        std::set<const IRenderElement*> all;
        for (int i = 0; i < Elements().NumRenderElements(); ++i)
            all.insert(Elements().GetRenderElement(i));
        EXPECT_EQ(met, all);
        if (output.pblock->GetInt("autoSort"_param)) {
            EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
        }
    }
    void CheckSets(const PSDOutput& output) const {
        std::set<std::string> names;
        for (const host::SelectionSet& set : Scene().SelectionSets())
            names.insert(host::ToUtf8(set.name.data()));
        for (const std::string& name : SetsOn(output)) {
            EXPECT_EQ(names.erase(name), 1U)
                << '"' << name << "\" is no set of the scene, or stands twice";
        }
    }

    void Step() {
        const std::size_t choice = Pick(1000);
        if (choice < 520) return HeldEdits();
        if (choice < 700) return UndoSome();
        if (choice < 800) return RedoSome();
        if (choice < 850) return IsExact() && Chance(70) ? HeldEdits() : UnheldEdit();
        if (choice < 940) return Synchronise();
        // Rare, since it waits for the disk.
        if (choice < 946) return SaveAndOpen();
        if (choice < 965) return OpenHalf();
        if (choice < 970) return Merge();
        if (choice < 972) return Empty();
        if (choice < 980) {
            App().settings.render.current =
                App().settings.render.current == RS_Draft ? RS_Production : RS_Draft;
            return;
        }
        if (choice < 987 && App().effects.size() < 3) return CopyEffect();
        if (choice < 993 && App().effects.size() < 3) return AddEffect();
        if (App().effects.size() > 1) RemoveEffect();
    }

    void Note(const char* what) {
        journal.push_back(what);
        if (journal.size() > 40) journal.pop_front();
    }
    std::string Journal() const {
        std::string text = "the last of what was done:";
        for (const char* entry : journal)
            text.append(" | ").append(entry);
        return text;
    }

    std::mt19937_64 random;
    TemporaryFolder folder;
    Choices choices;
    // The scene before and after each step.
    std::vector<std::pair<Moment, Moment>> done;
    std::vector<std::pair<Moment, Moment>> undone;
    std::deque<const char*> journal;
};

TEST_P(SceneProperty, TheListsFollowTheScene) {
    const int steps = StepsOfARun();
    for (int step = 0; step < steps; ++step) {
        Step();
        CheckScene();
        CheckEffects();
        if (HasFailure()) {
            FAIL() << "at step " << step << " of the run with seed " << GetParam().seed << ", "
                   << Journal();
        }
    }
}

std::vector<Run> Runs() {
    std::vector<Run> runs = {{1, true}, {2, true}, {3, true}, {4, false}, {5, false}};
    if (const char* seed = std::getenv("VELTRANE_PROPERTY_SEED")) {
        const auto number = static_cast<std::uint64_t>(std::strtoull(seed, nullptr, 10));
        runs.push_back({number, true});
        runs.push_back({number, false});
    }
    return runs;
}

std::string NameOf(const testing::TestParamInfo<Run>& run) {
    return std::to_string(run.index) + (run.param.exact ? "ExactSeed" : "MixedSeed") +
           std::to_string(run.param.seed);
}

INSTANTIATE_TEST_SUITE_P(Runs, SceneProperty, testing::ValuesIn(Runs()), NameOf);

}  // namespace
}  // namespace scene_property
