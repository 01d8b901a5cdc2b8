// Selections that the user gave names.
#pragma once

#include <vector>

#include <strclass.h>

namespace host {

class Node;

struct SelectionSet {
    MSTR name;
    // Each once.
    std::vector<Node*> nodes;
};

}  // namespace host
