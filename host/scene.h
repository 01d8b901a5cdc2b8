// The scene around a frame, as far as effects look at it: nodes, layers and named selection sets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/node.h"
#include "host/scene_layer.h"
#include "host/selection_sets.h"

namespace host {

class RootNode;

// Edits of the running application's scene can be undone when theHold holds, and are broadcast:
// layers that come, go or change their parent, and sets. An undo is broadcast as the edit that it
// amounts to. Other scenes record and broadcast nothing.
class Scene {
  public:
    Scene();
    // Layers and nodes go, and their dependents are told.
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    // The node that those without a parent hang from, in order of creation. It stays as long as the
    // scene, and is none of the nodes that are counted and found by name.
    INode& Root() const;

    // In no layer, and without a render id. Names may repeat.
    Node& AddNode(const MSTR& name, Node* parent = nullptr);
    // The oldest node of that very name; null when there is none.
    Node* FindNode(const MSTR& name) const;
    // The node goes out of its layer and the selection sets; its children hang from its parent
    // then, and those that were members of the group whose head it was are members no longer,
    // unless they come into another group.
    void Remove(Node& node);
    // In order of creation.
    int NumNodes() const { return static_cast<int>(nodes_.size()); }
    // Null for an index out of range.
    Node* GetNode(int index) const;
    // Gives every node that has no render id one that no other node has and that was never given
    // before: from 0 on in order of creation, up to 65533. Nodes beyond that stay at 65535. A node
    // keeps its id from then on, so that a run of frames sees the same ids.
    void AssignRenderIDs();

    // A scene starts without layers.
    SceneLayer& AddLayer(const MSTR& name, SceneLayer* parent = nullptr);
    // The oldest layer of that very name; null when there is none.
    SceneLayer* FindLayer(const MSTR& name) const;
    // The layer's nodes and child layers go to its parent; at the top, the nodes are in no layer
    // then.
    void Remove(SceneLayer& layer);
    // Parents before their children, and siblings by name as people count (MaxAlphaNumCompI).
    // Valid until a layer comes, goes, or changes name or place.
    const std::vector<SceneLayer*>& Layers() const;

    // Nulls and repetitions are left out. A set of that name that is there is edited, which the
    // host broadcasts as a deletion and a creation between two notifications about the edit.
    void AddSelectionSet(const MSTR& name, const std::vector<Node*>& nodes);
    // False when there is no such set, or the new name is taken.
    bool RenameSelectionSet(const MSTR& name, const MSTR& newName);
    bool RemoveSelectionSet(const MSTR& name);
    // In order of creation.
    const std::vector<SelectionSet>& SelectionSets() const { return sets_; }

    // Removes all but the root, and tells dependents. Broadcasts nothing, and can't be undone.
    void Clear();

    // All of a scene but its root, apart from it. Destroying it is as Clear.
    class Contents {
      public:
        Contents() = default;
        Contents(Contents&&) = default;
        Contents& operator=(Contents&&) = delete;
        ~Contents();

      private:
        friend class Scene;
        std::vector<std::unique_ptr<SceneLayer>> layers;
        std::vector<std::unique_ptr<Node>> nodes;
        std::vector<SelectionSet> sets;
        int nextRenderID = 0;
        std::unordered_set<int> goneRenderIDs;
    };
    // Leaves an empty scene. Nobody is told of this, nor of PutBack.
    Contents TakeContents();
    // Of this scene, which must be empty.
    void PutBack(Contents contents);

  private:
    friend class LayerPresence;
    friend class Node;
    friend class NodePresence;
    friend class RootNode;
    friend class SceneLayer;
    friend class SetNameRestore;
    friend class SetNodesRestore;
    friend class SetPresenceRestore;
    using Name = std::basic_string<MCHAR>;

    // Whether this is the running application's.
    bool IsOpen() const;
    bool Records() const;
    void Tell(int code, void* callParam = nullptr) const;

    // Where in a list in order of creation the object of that number stands, or would stand.
    template <class Objects>
    static auto PlaceOf(Objects& objects, std::uint64_t serial);
    // Into the lists of the scene and out of them; what the node hangs from is the caller's matter.
    void Insert(std::unique_ptr<Node> node);
    std::unique_ptr<Node> Release(Node& node);
    void Insert(std::unique_ptr<SceneLayer> layer);
    std::unique_ptr<SceneLayer> Release(SceneLayer& layer);

    void EnterName(Node& node);
    void LeaveName(Node& node);
    // The nodes without a parent, in order of creation.
    const std::vector<Node*>& TopNodes();

    SelectionSet* FindSet(const MSTR& name);
    std::size_t TakeSet(const SelectionSet& set);
    void PutSet(std::size_t place, SelectionSet set);
    // A set of that name gets these nodes.
    void EditSet(const SelectionSet& edited);
    void TellOfSet(int code, const MSTR& name) const;

    std::unique_ptr<RootNode> root_;
    std::uint64_t nextSerial_ = 0;
    // In order of creation.
    std::vector<std::unique_ptr<Node>> nodes_;
    // Empty when it is to be made anew.
    std::vector<Node*> topNodes_;
    // Those of a name, in order of creation.
    std::unordered_map<Name, std::vector<Node*>> nodesByName_;
    int nextRenderID_ = 0;
    // Of nodes that left the scene: one may come back with an undo.
    std::unordered_set<int> goneRenderIDs_;
    // In order of creation.
    std::vector<std::unique_ptr<SceneLayer>> layers_;
    // Empty when it is to be made anew.
    mutable std::vector<SceneLayer*> sortedLayers_;
    std::vector<SelectionSet> sets_;
};

}  // namespace host
