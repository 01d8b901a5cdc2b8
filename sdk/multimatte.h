// What the three colour components of a matte element stand for. Declared by the renderers' own
// elements; reached with GetInterface of the render element.
#pragma once

#include "inode.h"
#include "tab.h"

struct MultiMatteComponent {
    // Pixels of the material or object id count.
    bool idOn = false;
    int id = 0;
    // A material id; otherwise an object id.
    bool isMaterial = false;
    // Nodes that count, or with `include` off all but these.
    Tab<INode*> nodes;
    bool include = true;
};

class IMultiMatte {
  public:
    // `component` 0 to 2.
    virtual void GetComponent(int component, MultiMatteComponent& description) = 0;

  protected:
    ~IMultiMatte() = default;
};

// Animatable::GetInterface's id.
constexpr DWORD MULTI_MATTE_INTERFACE = 0x51d7a2c6;
