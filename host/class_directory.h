// The classes that plug-ins gave to the host.
#pragma once

#include <vector>

#include <plugapi.h>

namespace host {

class ClassDirectory {
  public:
    // Not owned; must outlive the directory. False, and not added, when a class of the same ids is
    // there.
    bool Add(ClassDesc* desc);
    // Null when there is none.
    ClassDesc* Find(SClass_ID superClass, Class_ID id) const;
    // A new object, owned by the caller and destroyed with DeleteThis; null for a class that isn't
    // there. The pointer is what the descriptor's Create gives.
    void* CreateInstance(SClass_ID superClass, Class_ID id) const;

    const std::vector<ClassDesc*>& Classes() const { return classes_; }
    // In the order in which they were added.
    std::vector<ClassDesc*> OfSuperClass(SClass_ID superClass) const;

  private:
    std::vector<ClassDesc*> classes_;
};

}  // namespace host
