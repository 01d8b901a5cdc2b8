#include "host/selection_sets.h"

#include <algorithm>
#include <memory>
#include <unordered_set>
#include <utility>

#include <INamedSelectionSetManager.h>
#include <hold.h>
#include <notify.h>

#include "host/application.h"
#include "host/scene.h"
#include "host/scene_tree.h"
#include "host/target_reference.h"

namespace host {
namespace {

// A set's nodes, which may be destroyed or leave the scene meanwhile.
class HeldNodes {
  public:
    explicit HeldNodes(const std::vector<Node*>& nodes) {
        references_.reserve(nodes.size());
        for (Node* node : nodes)
            references_.push_back(std::make_unique<TargetReference>(node));
    }

    std::vector<Node*> InScene() const {
        std::vector<Node*> nodes;
        for (const auto& reference : references_) {
            auto* node = static_cast<Node*>(reference->Get());
            if (node && node->IsInScene()) nodes.push_back(node);
        }
        return nodes;
    }

  private:
    std::vector<std::unique_ptr<TargetReference>> references_;
};

}  // namespace

// All these are about the running application's scene. They come into the hold when the listeners
// have heard of the edit: what listeners recorded is then restored after the edit itself is taken
// back and they have heard of that.

// Takes back that a set came or went.
class SetPresenceRestore final : public RestoreObj {
  public:
    static std::unique_ptr<SetPresenceRestore> OfComing(const MSTR& name) {
        return std::unique_ptr<SetPresenceRestore>(
            new SetPresenceRestore(true, name, 0, HeldNodes({})));
    }
    static std::unique_ptr<SetPresenceRestore> OfGoing(std::size_t place, const SelectionSet& set) {
        return std::unique_ptr<SetPresenceRestore>(
            new SetPresenceRestore(false, set.name, place, HeldNodes(set.nodes)));
    }

    void Restore(int /*isUndo*/) override { came_ ? Take() : Put(); }
    void Redo() override { came_ ? Put() : Take(); }

  private:
    SetPresenceRestore(bool came, const MSTR& name, std::size_t place, HeldNodes nodes)
        : came_(came), name_(name), place_(place), nodes_(std::move(nodes)) {}

    void Take() {
        Scene& scene = App().scene;
        const SelectionSet* set = scene.FindSet(name_);
        if (!set) return;
        nodes_ = HeldNodes(set->nodes);
        place_ = scene.TakeSet(*set);
        scene.TellOfSet(NOTIFY_NAMED_SEL_SET_DELETED, name_);
    }
    void Put() {
        Scene& scene = App().scene;
        if (scene.FindSet(name_)) return;
        scene.PutSet(place_, {name_, nodes_.InScene()});
        scene.TellOfSet(NOTIFY_NAMED_SEL_SET_CREATED, name_);
    }

    bool came_;
    MSTR name_;
    std::size_t place_;
    HeldNodes nodes_;
};

// Takes back an edit of a set's nodes.
class SetNodesRestore final : public RestoreObj {
  public:
    explicit SetNodesRestore(const SelectionSet& before)
        : name_(before.name), other_(before.nodes) {}

    void Restore(int /*isUndo*/) override { Exchange(); }
    void Redo() override { Exchange(); }

  private:
    void Exchange() {
        Scene& scene = App().scene;
        const SelectionSet* set = scene.FindSet(name_);
        if (!set) return;
        const SelectionSet edited{name_, other_.InScene()};
        other_ = HeldNodes(set->nodes);
        scene.EditSet(edited);
    }

    MSTR name_;
    HeldNodes other_;
};

// Takes back that a set was renamed.
class SetNameRestore final : public RestoreObj {
  public:
    SetNameRestore(const MSTR& oldName, const MSTR& newName)
        : oldName_(oldName), newName_(newName) {}

    void Restore(int /*isUndo*/) override { App().scene.RenameSelectionSet(newName_, oldName_); }
    void Redo() override { App().scene.RenameSelectionSet(oldName_, newName_); }

  private:
    MSTR oldName_;
    MSTR newName_;
};

SelectionSet* Scene::FindSet(const MSTR& name) {
    const auto found = std::find_if(sets_.begin(), sets_.end(),
                                    [&](const SelectionSet& set) { return set.name == name; });
    return found == sets_.end() ? nullptr : &*found;
}

void Scene::TellOfSet(int code, const MSTR& name) const {
    Tell(code, const_cast<MCHAR*>(name.data()));
}

// The place that it had.
std::size_t Scene::TakeSet(const SelectionSet& set) {
    const std::ptrdiff_t place = &set - sets_.data();
    sets_.erase(sets_.begin() + place);
    return static_cast<std::size_t>(place);
}

void Scene::PutSet(std::size_t place, SelectionSet set) {
    const auto at = static_cast<std::ptrdiff_t>(std::min(place, sets_.size()));
    sets_.insert(sets_.begin() + at, std::move(set));
}

void Scene::EditSet(const SelectionSet& edited) {
    Tell(NOTIFY_NAMED_SEL_SET_PRE_MODIFY);
    std::size_t place = sets_.size();
    if (const SelectionSet* set = FindSet(edited.name)) place = TakeSet(*set);
    TellOfSet(NOTIFY_NAMED_SEL_SET_DELETED, edited.name);
    PutSet(place, edited);
    TellOfSet(NOTIFY_NAMED_SEL_SET_CREATED, edited.name);
    Tell(NOTIFY_NAMED_SEL_SET_POST_MODIFY);
}

void Scene::AddSelectionSet(const MSTR& name, const std::vector<Node*>& nodes) {
    std::vector<Node*> members;
    std::unordered_set<Node*> seen;
    for (Node* node : nodes) {
        if (node && seen.insert(node).second) {
            members.push_back(node);
        }
    }
    // The name that was given may be that of a set that goes.
    const SelectionSet made{name, std::move(members)};
    const bool records = Records();
    std::unique_ptr<RestoreObj> undo;
    if (const SelectionSet* old = FindSet(made.name)) {
        if (records) undo = std::make_unique<SetNodesRestore>(*old);
        EditSet(made);
    } else {
        if (records) undo = SetPresenceRestore::OfComing(made.name);
        PutSet(sets_.size(), made);
        TellOfSet(NOTIFY_NAMED_SEL_SET_CREATED, made.name);
    }
    if (undo) theHold.Put(undo.release());
}

bool Scene::RenameSelectionSet(const MSTR& name, const MSTR& newName) {
    SelectionSet* set = FindSet(name);
    if (!set || FindSet(newName)) {
        return false;
    }
    const bool records = Records();
    const MSTR oldName = std::exchange(set->name, newName);
    NameChange change{oldName.data(), newName.data()};
    Tell(NOTIFY_NAMED_SEL_SET_RENAMED, &change);
    if (records) theHold.Put(new SetNameRestore(oldName, newName));
    return true;
}

bool Scene::RemoveSelectionSet(const MSTR& name) {
    const SelectionSet* set = FindSet(name);
    if (!set) {
        return false;
    }
    const SelectionSet gone = *set;
    const bool records = Records();
    const std::size_t place = TakeSet(*set);
    TellOfSet(NOTIFY_NAMED_SEL_SET_DELETED, gone.name);
    if (records) theHold.Put(SetPresenceRestore::OfGoing(place, gone).release());
    return true;
}

// What the host's interface looks at

namespace {

class ApplicationSelectionSets final : public INamedSelectionSetManager {
  public:
    int GetNumNamedSelSets() override {
        return static_cast<int>(App().scene.SelectionSets().size());
    }
    bool GetNamedSelSetName(int setIndex, MSTR& name) override {
        const SelectionSet* set = Find(setIndex);
        if (set) {
            name = set->name;
        }
        return set != nullptr;
    }
    int GetNamedSelSetItemCount(int setIndex) override {
        const SelectionSet* set = Find(setIndex);
        return set ? static_cast<int>(set->nodes.size()) : 0;
    }
    INode* GetNamedSelSetItem(int setIndex, int index) override {
        const SelectionSet* set = Find(setIndex);
        return set ? At(set->nodes, index) : nullptr;
    }

  private:
    const SelectionSet* Find(int index) {
        const auto& sets = App().scene.SelectionSets();
        return index >= 0 && index < GetNumNamedSelSets() ? &sets[static_cast<std::size_t>(index)]
                                                          : nullptr;
    }
};

}  // namespace
}  // namespace host

INamedSelectionSetManager* INamedSelectionSetManager::GetInstance() {
    static host::ApplicationSelectionSets sets;
    return &sets;
}
