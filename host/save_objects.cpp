// Objects as the plain values of a file, each after all that it refers to.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>

#include "host/object_chunks.h"
#include "host/object_classes.h"
#include "host/param_block.h"
#include "host/saved_objects.h"

namespace host {
namespace {

// The block that the object has as its reference of that number; null for any other target.
ParamBlock* OwnBlock(ReferenceMaker& object, int which) {
    auto* block = dynamic_cast<ParamBlock*>(object.GetReference(which));
    return block && block->GetOwner() == &object ? block : nullptr;
}

std::string ObjectText(ReferenceTarget& object) {
    return "an object of the class " + ClassText(object.ClassID()) + " of the super class " +
           std::to_string(object.SuperClassID());
}

class ObjectSaver {
  public:
    explicit ObjectSaver(Handles& handles) : handles_(handles) {}

    // Describes the target, unless the file has it, and what it refers to. The number of objects in
    // the longest chain from it down.
    int Add(ReferenceTarget* target, int above);
    std::vector<SavedObject> Take() { return std::move(objects_); }

  private:
    int AddAll(ReferenceMaker& maker, int above);
    SavedObject Describe(ReferenceTarget& object);

    Handles& handles_;
    std::vector<SavedObject> objects_;
    std::unordered_map<const ReferenceTarget*, int> heights_;
};

int ObjectSaver::Add(ReferenceTarget* target, int above) {
    if (!target) return 0;
    if (const auto known = heights_.find(target); known != heights_.end()) return known->second;
    if (handles_.Find(target) != 0 || IsOfTheScene(*target)) return 0;
    if (dynamic_cast<IParamBlock2*>(target)) {
        throw std::runtime_error(
            "a file can't hold a reference to the parameter block of another object");
    }
    if (!StandsInFiles(target->SuperClassID())) {
        throw std::runtime_error("a file can't hold " + ObjectText(*target));
    }
    const int height = 1 + (above < maxObjectDepth ? AddAll(*target, above + 1) : maxObjectDepth);
    if (height > maxObjectDepth) {
        throw std::runtime_error(
            "a file can't hold objects that refer to each other in a chain "
            "of more than " +
            std::to_string(maxObjectDepth));
    }
    SavedObject saved = Describe(*target);
    saved.handle = handles_.Of(target);
    objects_.push_back(std::move(saved));
    heights_.emplace(target, height);
    return height;
}

int ObjectSaver::AddAll(ReferenceMaker& maker, int above) {
    int height = 0;
    for (int which = 0; which < maker.NumRefs(); ++which) {
        ParamBlock* block = OwnBlock(maker, which);
        height =
            std::max(height, block ? AddAll(*block, above) : Add(maker.GetReference(which), above));
    }
    return height;
}

SavedObject ObjectSaver::Describe(ReferenceTarget& object) {
    SavedObject saved;
    saved.superClass = object.SuperClassID();
    saved.classID = object.ClassID();
    saved.appData = SaveAppData(object);
    for (int which = 0; which < object.NumRefs(); ++which) {
        if (const ParamBlock* block = OwnBlock(object, which)) {
            saved.references.emplace_back(block->SaveValues(handles_));
        } else {
            saved.references.emplace_back(
                SavedReference{handles_.Find(object.GetReference(which))});
        }
    }
    ChunkWriter writer;
    if (object.Save(&writer) != IO_OK) {
        throw std::runtime_error(ObjectText(object) + " couldn't save itself");
    }
    if (!writer.IsBalanced()) {
        throw std::runtime_error(ObjectText(object) +
                                 " couldn't save itself: its chunks don't begin and end in pairs");
    }
    saved.chunks = writer.Take();
    return saved;
}

}  // namespace

std::vector<SavedObject> SaveObjects(const std::vector<ReferenceTarget*>& roots, Handles& handles) {
    ObjectSaver saver(handles);
    for (ReferenceTarget* root : roots) {
        saver.Add(root, 0);
    }
    return saver.Take();
}

}  // namespace host
