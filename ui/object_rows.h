// Edits of the list of objects. Row i is entry i of `objectList`; each edit is one step that the
// user can take back, and none where nothing is to be done.
#pragma once

#include <span>
#include <vector>

class INode;
class IParamBlock2;

namespace ui {

bool IsInObjectList(IParamBlock2& pblock, INode* node);

// Adds the host's selected nodes that aren't in the list, in their order.
void AddSelectedObjects(IParamBlock2& pblock);

// Rows in any order here and below; those that aren't there are left out.
void RemoveObjects(IParamBlock2& pblock, std::span<const int> rows);

// Moves each row by `delta`, plus or minus 1; one that would leave the list stays. Gives the rows
// in which the entries then are, in order, to be selected.
std::vector<int> MoveObjects(IParamBlock2& pblock, std::span<const int> rows, int delta);

}  // namespace ui
