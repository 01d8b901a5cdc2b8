// Faults of a file's objects, found before anything is made of them.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "host/object_classes.h"
#include "host/param_block.h"
#include "host/saved_objects.h"
#include "host/text.h"

namespace host {
namespace {

using ValueKind = ParamBlock::ValueKind;

ValueKind KindOf(const SavedValue& value) {
    if (std::holds_alternative<MSTR>(value)) return ValueKind::Text;
    return std::holds_alternative<SavedReference>(value) ? ValueKind::Target : ValueKind::Number;
}

const char* NameOf(ValueKind kind) {
    switch (kind) {
        case ValueKind::Text:
            return "a text";
        case ValueKind::Target:
            return "a reference";
        default:
            return "a number";
    }
}

const char* NameOf(SceneTarget kind) {
    switch (kind) {
        case SceneTarget::Layer:
            return "a scene layer";
        case SceneTarget::RenderElement:
            return "a render element";
        default:
            return "a node";
    }
}

bool IsTooDeep(const std::vector<SavedChunk>& outermost) {
    std::vector<std::pair<const SavedChunk*, int>> left;
    const auto add = [&left](const std::vector<SavedChunk>& chunks, int depth) {
        for (const SavedChunk& chunk : chunks) {
            left.emplace_back(&chunk, depth);
        }
    };
    add(outermost, 1);
    while (!left.empty()) {
        const auto [chunk, depth] = left.back();
        left.pop_back();
        if (depth > maxChunkDepth) return true;
        add(chunk->chunks, depth + 1);
    }
    return false;
}

std::string ParameterText(const SavedBlock& block, const SavedParameter& parameter,
                          const ParamDef* def) {
    std::string text = "the parameter " + std::to_string(parameter.id);
    if (def && !def->int_name.isNull()) text += " (" + ToUtf8(def->int_name) + ")";
    return text + " of the block " + std::to_string(block.id);
}

// What the class knows of a saved parameter; null when it no longer has it in its block.
const ParamDef* FindDef(ParamBlockDesc2* desc, ParamID id) {
    const int index = desc ? desc->IDtoIndex(id) : -1;
    if (index < 0) return nullptr;
    const ParamDef& def = desc->GetParamDefByIndex(index);
    return (def.flags & P_OWNERS_REF) ? nullptr : &def;
}

class ObjectChecker {
  public:
    ObjectChecker(const std::vector<SavedObject>& objects, const std::vector<KnownTarget>& known,
                  const ClassDirectory& classes);
    std::vector<ObjectFault> Check();

  private:
    void CheckObject(const SavedObject& object);
    void CheckReference(ClassDesc2* desc, std::size_t which, Handle target);
    void CheckBlock(ClassDesc2* classDesc, const SavedBlock& block);
    void CheckParameter(const SavedBlock& block, const SavedParameter& parameter,
                        const ParamDef* def);
    void CheckValue(const std::string& where, const SavedValue& value, const ParamDef& def);
    void CheckHandle(const std::string& where, Handle target, bool mustBeNode);
    void CheckChains();
    // The described objects that the object refers to.
    std::vector<std::size_t> Targets(const SavedObject& object) const;
    void Add(std::string text) { faults_.push_back({at_, std::move(text)}); }

    const std::vector<SavedObject>& objects_;
    const ClassDirectory& classes_;
    std::unordered_map<Handle, SceneTarget> known_;
    std::unordered_map<Handle, std::size_t> described_;
    // The object that is being looked at.
    std::size_t at_ = 0;
    std::vector<ObjectFault> faults_;
};

ObjectChecker::ObjectChecker(const std::vector<SavedObject>& objects,
                             const std::vector<KnownTarget>& known, const ClassDirectory& classes)
    : objects_(objects), classes_(classes) {
    for (const KnownTarget& target : known) {
        known_.emplace(target.handle, target.kind);
    }
    for (std::size_t index = 0; index < objects.size(); ++index) {
        described_.emplace(objects[index].handle, index);
    }
}

std::vector<ObjectFault> ObjectChecker::Check() {
    for (at_ = 0; at_ < objects_.size(); ++at_) {
        CheckObject(objects_[at_]);
    }
    CheckChains();
    return std::move(faults_);
}

void ObjectChecker::CheckObject(const SavedObject& object) {
    if (object.handle == 0) {
        Add("has the handle 0, which stands for no object");
    } else if (known_.contains(object.handle) || described_.at(object.handle) != at_) {
        Add("has the handle " + std::to_string(object.handle) + ", which is taken already");
    }
    if (IsTooDeep(object.chunks)) {
        Add("has chunks that lie in each other deeper than " + std::to_string(maxChunkDepth));
    }
    ClassDesc* desc = classes_.Find(object.superClass, object.classID);
    if (!desc) {
        Add("no library offers the class " + ClassText(object.classID) + " of the super class " +
            std::to_string(object.superClass));
    } else if (!StandsInFiles(object.superClass)) {
        Add("objects of the super class " + std::to_string(object.superClass) +
            " have no place in a scene file");
    }
    auto* classDesc = dynamic_cast<ClassDesc2*>(desc);
    for (std::size_t which = 0; which < object.references.size(); ++which) {
        if (const auto* block = std::get_if<SavedBlock>(&object.references[which])) {
            CheckBlock(classDesc, *block);
        } else {
            CheckReference(classDesc, which,
                           std::get<SavedReference>(object.references[which]).target);
        }
    }
}

void ObjectChecker::CheckReference(ClassDesc2* classDesc, std::size_t which, Handle target) {
    if (target == 0) return;
    const std::string where = "the reference " + std::to_string(which);
    const int number = static_cast<int>(which);
    bool mustBeNode = false;
    for (int index = 0; classDesc && index < classDesc->NumParamBlockDescs(); ++index) {
        const ParamBlockDesc2& desc = *classDesc->GetParamBlockDesc(index);
        if ((desc.flags & P_AUTO_CONSTRUCT) && desc.ref_no == number) {
            Add(where + " is to the object " + std::to_string(target) +
                " where a parameter block must be");
            return;
        }
        for (int at = 0; at < desc.Count(); ++at) {
            const ParamDef& def = desc.GetParamDefByIndex(at);
            const bool isIt = (def.flags & P_OWNERS_REF) && def.refno == number;
            mustBeNode = mustBeNode || (isIt && def.type == TYPE_INODE);
        }
    }
    CheckHandle(where, target, mustBeNode);
}

void ObjectChecker::CheckBlock(ClassDesc2* classDesc, const SavedBlock& block) {
    ParamBlockDesc2* desc = classDesc ? classDesc->GetParamBlockDescByID(block.id) : nullptr;
    std::unordered_set<ParamID> ids;
    for (const SavedParameter& parameter : block.parameters) {
        const ParamDef* def = FindDef(desc, parameter.id);
        if (!ids.insert(parameter.id).second) {
            Add(ParameterText(block, parameter, def) + " is there twice");
        }
        CheckParameter(block, parameter, def);
    }
}

// One fault a parameter, since a table can have very many.
void ObjectChecker::CheckParameter(const SavedBlock& block, const SavedParameter& parameter,
                                   const ParamDef* def) {
    const std::string where = ParameterText(block, parameter, def);
    const bool isTable = def && (def->type & TYPE_TAB);
    if (def && isTable != ((parameter.type & TYPE_TAB) != 0)) {
        Add(where + (isTable ? " holds one value where a table must be"
                             : " holds a table where one value must be"));
    } else if (def && !isTable && parameter.values.size() != 1) {
        Add(where + " holds " + std::to_string(parameter.values.size()) +
            " values where one must be");
    } else {
        const std::size_t before = faults_.size();
        for (const SavedValue& value : parameter.values) {
            if (def) {
                CheckValue(where, value, *def);
            } else if (const auto* reference = std::get_if<SavedReference>(&value)) {
                CheckHandle(where, reference->target, false);
            }
            if (faults_.size() != before) break;
        }
    }
}

void ObjectChecker::CheckValue(const std::string& where, const SavedValue& value,
                               const ParamDef& def) {
    const ValueKind kind = ParamBlock::ValueKindOf(def.type);
    const auto* fraction = std::get_if<float>(&value);
    const auto* text = std::get_if<MSTR>(&value);
    if (KindOf(value) != kind) {
        Add(where + " holds " + NameOf(KindOf(value)) + " where " + NameOf(kind) + " must be");
    } else if (fraction && std::isnan(*fraction)) {
        Add(where + " holds what is no number");
    } else if (text && MSTR(text->data()) != *text) {
        Add(where + " holds a text with the character 0 in it");
    } else if (const auto* reference = std::get_if<SavedReference>(&value)) {
        CheckHandle(where, reference->target, (def.type & ~TYPE_TAB) == TYPE_INODE);
    }
}

void ObjectChecker::CheckHandle(const std::string& where, Handle target, bool mustBeNode) {
    if (target == 0) return;
    const auto known = known_.find(target);
    const std::string what = " is to the object " + std::to_string(target);
    if (known == known_.end() && !described_.contains(target)) {
        Add(where + what + ", which is nowhere in the file");
    } else if (mustBeNode && known == known_.end()) {
        Add(where + what + " where a node must be");
    } else if (mustBeNode && known->second != SceneTarget::Node) {
        Add(where + what + ", " + NameOf(known->second) + ", where a node must be");
    }
}

std::vector<std::size_t> ObjectChecker::Targets(const SavedObject& object) const {
    std::vector<std::size_t> targets;
    const auto add = [&](const SavedReference& reference) {
        const auto found = described_.find(reference.target);
        if (reference.target != 0 && found != described_.end()) targets.push_back(found->second);
    };
    for (const auto& reference : object.references) {
        if (const auto* target = std::get_if<SavedReference>(&reference)) {
            add(*target);
            continue;
        }
        for (const SavedParameter& parameter : std::get<SavedBlock>(reference).parameters) {
            for (const SavedValue& value : parameter.values) {
                if (const auto* target = std::get_if<SavedReference>(&value)) add(*target);
            }
        }
    }
    return targets;
}

// Down every chain of references, without recursion: whoever wrote the file chose how long they
// are.
void ObjectChecker::CheckChains() {
    struct Step {
        std::size_t object = 0;
        std::vector<std::size_t> targets;
        std::size_t next = 0;
    };
    // 0 for an object that wasn't met yet, -1 for one in the chain, otherwise the number of objects
    // in the longest chain from it down.
    std::vector<std::int64_t> heights(objects_.size());
    std::vector<Step> chain;
    const auto begin = [&](std::size_t object) {
        heights[object] = -1;
        chain.push_back({object, Targets(objects_[object])});
    };
    for (std::size_t first = 0; first < objects_.size(); ++first) {
        if (heights[first] == 0) begin(first);
        while (!chain.empty()) {
            Step& step = chain.back();
            at_ = step.object;
            if (step.next < step.targets.size()) {
                const std::size_t target = step.targets[step.next++];
                if (heights[target] == 0) {
                    begin(target);
                } else if (heights[target] == -1) {
                    Add(target == at_
                            ? "refers to itself"
                            : "refers to the object " + std::to_string(objects_[target].handle) +
                                  ", which refers back to it");
                }
                continue;
            }
            std::int64_t below = 0;
            for (std::size_t target : step.targets) {
                below = std::max(below, heights[target]);
            }
            heights[at_] = below + 1;
            if (below == maxObjectDepth) {
                Add("begins a chain of more than " + std::to_string(maxObjectDepth) +
                    " objects that refer to each other");
            }
            chain.pop_back();
        }
    }
}

}  // namespace

std::vector<ObjectFault> CheckObjects(const std::vector<SavedObject>& objects,
                                      const std::vector<KnownTarget>& known,
                                      const ClassDirectory& classes) {
    return ObjectChecker(objects, known, classes).Check();
}

}  // namespace host
