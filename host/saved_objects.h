// Objects of the scene apart from it: what a scene file keeps of effects and of all that they refer
// to, as plain values. Made from living objects, and living objects are made of it.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include <iparamb2.h>
#include <ref.h>

#include "host/class_directory.h"

namespace host {

// Names a target in a file: above 0, each once. 0 is no target.
using Handle = std::uint32_t;

struct SavedAppData {
    Class_ID owner;
    SClass_ID ownerSuperClass = 0;
    DWORD subID = 0;
    std::vector<std::uint8_t> bytes;
};

// What an object's own Save wrote.
struct SavedChunk {
    USHORT id = 0;
    // The chunk's own, without those of the chunks in it.
    std::vector<std::uint8_t> bytes;
    std::vector<SavedChunk> chunks;
};

struct SavedReference {
    Handle target = 0;
};

// Booleans are integers.
using SavedValue = std::variant<int, float, MSTR, SavedReference>;

struct SavedParameter {
    ParamID id = 0;
    // Of the descriptor that the file was saved with; a table's has TYPE_TAB.
    ParamType2 type = TYPE_INT;
    // Exactly one unless it is a table.
    std::vector<SavedValue> values;
};

struct SavedBlock {
    BlockID id = 0;
    // The descriptor's version when the file was saved.
    DWORD version = 0;
    // Without those that are their owner's references.
    std::vector<SavedParameter> parameters;
};

// An object that the file describes whole; nodes, scene layers and render elements are only named
// by their handles here.
struct SavedObject {
    Handle handle = 0;
    SClass_ID superClass = 0;
    Class_ID classID;
    std::vector<SavedChunk> chunks;
    std::vector<SavedAppData> appData;
    // One for each of the object's references, by its number. Blocks are the object's own.
    std::vector<std::variant<SavedReference, SavedBlock>> references;
};

// Which target has which handle, while a file is written or read.
class Handles {
  public:
    // The target's handle, a new one if it has none yet; 0 for null.
    Handle Of(ReferenceTarget* target);
    // 0 for a target that has none.
    Handle Find(const ReferenceTarget* target) const;
    // False, and nothing done, for 0 and for a handle or target that is there already.
    bool Enter(Handle handle, ReferenceTarget* target);
    // Null for a handle that isn't there.
    ReferenceTarget* Target(Handle handle) const;

  private:
    std::unordered_map<const ReferenceTarget*, Handle> handles_;
    std::unordered_map<Handle, ReferenceTarget*> targets_;
    Handle last_ = 0;
};

// Objects refer to each other, and chunks lie in each other, no deeper than this, so that walks
// over them stay shallow.
constexpr int maxObjectDepth = 64;
constexpr int maxChunkDepth = 64;

std::vector<SavedAppData> SaveAppData(const Animatable& object);
// Of `saved` no two are of one owner.
void LoadAppData(const std::vector<SavedAppData>& saved, Animatable& object);

// `roots` and all that they and their blocks refer to, targets before those that refer to them. A
// target that has a handle in `handles` when it is met is taken to be in the file already; the
// others get one. A node, scene layer or render element without a handle isn't in the file: it is
// saved as no target. Throws std::runtime_error when an object's Save fails, and for what no file
// can hold: an object of a super class that has no place there, another's parameter block, and
// references deeper than maxObjectDepth.
std::vector<SavedObject> SaveObjects(const std::vector<ReferenceTarget*>& roots, Handles& handles);

// What a file describes apart from its objects, and objects only name.
enum class SceneTarget { Node, Layer, RenderElement };
struct KnownTarget {
    Handle handle = 0;
    SceneTarget kind = SceneTarget::Node;
};

// Whether LoadObjects will take them: every class is known, handles are named once and refer to
// something in `objects` or `known`, without circles; a parameter that the class still has holds
// values of its type, where numbers stand for each other. Empty when all is well, otherwise the
// fault of the object `index`, without its number; an object may have several. The handles of
// `known` are taken as they are.
struct ObjectFault {
    std::size_t index = 0;
    std::string text;
};
std::vector<ObjectFault> CheckObjects(const std::vector<SavedObject>& objects,
                                      const std::vector<KnownTarget>& known,
                                      const ClassDirectory& classes);

// Makes the objects of a list that CheckObjects passed, with `handles` holding what it knew, and
// enters them there. Parameters that the class no longer has are left out, as are blocks and
// references; those that the file doesn't have are as the constructor left them. Blocks have
// IParamBlock2PostLoadInfo when the post-load callbacks run, which is at the end, and not after it.
// The objects are the caller's: see DestroyUnreferred. Throws std::runtime_error, with all that was
// made destroyed and `handles` as it was, when an object's Load fails or an object doesn't take a
// reference.
void LoadObjects(const std::vector<SavedObject>& objects, Handles& handles,
                 const ClassDirectory& classes);

// Destroys those of the loaded `objects` that nobody refers to, but for `kept`, and with them what
// only they referred to. `handles` still names them.
void DestroyUnreferred(const std::vector<SavedObject>& objects, const std::vector<Handle>& kept,
                       const Handles& handles);

}  // namespace host
