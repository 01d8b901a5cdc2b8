// Class ids and class descriptors.
#pragma once

#include "maxtypes.h"

using SClass_ID = DWORD;

constexpr SClass_ID REF_TARGET_CLASS_ID = 0x200;
constexpr SClass_ID BMM_IO_CLASS_ID = 0xB30;
constexpr SClass_ID RENDERER_CLASS_ID = 0xF00;
constexpr SClass_ID RENDER_EFFECT_CLASS_ID = 0x1090;
constexpr SClass_ID RENDER_ELEMENT_CLASS_ID = 0x1150;

class Class_ID {
  public:
    constexpr Class_ID() = default;
    constexpr Class_ID(DWORD a, DWORD b) : a_(a), b_(b) {}
    constexpr DWORD PartA() const { return a_; }
    constexpr DWORD PartB() const { return b_; }
    friend constexpr bool operator==(const Class_ID&, const Class_ID&) = default;

  private:
    DWORD a_ = 0xffffffff;
    DWORD b_ = 0xffffffff;
};

// What a library tells the host of one of its classes. The host never frees a descriptor.
class ClassDesc {
  public:
    virtual ~ClassDesc() = default;
    // 0 hides the class from the lists that the user sees.
    virtual int IsPublic() = 0;
    // A new object of the class, which the host owns and destroys with DeleteThis.
    virtual void* Create(BOOL loading = FALSE) = 0;
    virtual const MCHAR* ClassName() = 0;
    virtual SClass_ID SuperClassID() = 0;
    virtual Class_ID ClassID() = 0;
    virtual const MCHAR* Category() = 0;
    // Fixed and not localised; the name of the class for scripts. Null for none.
    virtual const MCHAR* InternalName() { return nullptr; }
    // The library that the class is of.
    virtual HINSTANCE HInstance() { return nullptr; }
};

class Interface_ID {
  public:
    constexpr Interface_ID(DWORD a, DWORD b) : a_(a), b_(b) {}
    friend constexpr bool operator==(const Interface_ID&, const Interface_ID&) = default;

  private:
    DWORD a_;
    DWORD b_;
};

// What an object offers beside its class, told by an id. The object owns it.
class BaseInterface {
  protected:
    virtual ~BaseInterface() = default;
};
