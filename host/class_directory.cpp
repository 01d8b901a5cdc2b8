#include "host/class_directory.h"

#include <algorithm>
#include <iterator>

namespace host {

bool ClassDirectory::Add(ClassDesc* desc) {
    if (!desc || Find(desc->SuperClassID(), desc->ClassID())) {
        return false;
    }
    classes_.push_back(desc);
    return true;
}

ClassDesc* ClassDirectory::Find(SClass_ID superClass, Class_ID id) const {
    for (ClassDesc* desc : classes_) {
        if (desc->SuperClassID() == superClass && desc->ClassID() == id) {
            return desc;
        }
    }
    return nullptr;
}

void* ClassDirectory::CreateInstance(SClass_ID superClass, Class_ID id) const {
    ClassDesc* desc = Find(superClass, id);
    return desc ? desc->Create() : nullptr;
}

std::vector<ClassDesc*> ClassDirectory::OfSuperClass(SClass_ID superClass) const {
    std::vector<ClassDesc*> found;
    std::copy_if(classes_.begin(), classes_.end(), std::back_inserter(found),
                 [&](ClassDesc* desc) { return desc->SuperClassID() == superClass; });
    return found;
}

}  // namespace host
