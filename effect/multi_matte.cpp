#include "effect/multi_matte.h"

#include <elementclasses.h>
#include <multimatte.h>
#include <renderelements.h>
#include <vrayelements.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "effect/text.h"

namespace effect {
namespace {

using Text = std::basic_string<MCHAR>;

// Units of a matte's name.
constexpr std::size_t longestName = 255;
constexpr std::size_t mostNodesNamed = 3;
constexpr const MCHAR* ellipsis = _M("...");

// How the mattes of one renderer are named.
struct MatteWords {
    Class_ID id;
    // The element's own name until the user gives it one, and what stands for it.
    const MCHAR* unnamed;
    const MCHAR* base;
    const MCHAR* materialID;
    const MCHAR* objectID;
};

constexpr MatteWords matteWords[] = {
    {VRAY_MULTI_MATTE_ELEMENT, _M("MultiMatteElement"), _M("Matte"), _M(" Material ID: "),
     _M(" Object ID: ")},
    {CORONA_MASK_ELEMENT, _M("CMasking_Mask"), _M("Mask"), _M(" Material ID "), _M(" Object ID: ")},
};

// Null for an element that is no matte.
const MatteWords* WordsOf(const Class_ID& id) {
    const auto* words = std::find_if(std::begin(matteWords), std::end(matteWords),
                                     [&id](const MatteWords& row) { return row.id == id; });
    return words == std::end(matteWords) ? nullptr : words;
}

// What a component masks, in a form that can be compared: the order of nodes has no meaning, and
// neither has the id where it is off. Deleted nodes don't count.
struct ColorMatte {
    bool idOn = false;
    int id = 0;
    bool isMaterial = false;
    bool include = true;
    std::vector<INode*> nodes;

    bool IsNothing() const { return !idOn && nodes.empty() && include; }
    friend bool operator==(const ColorMatte&, const ColorMatte&) = default;
};

ColorMatte MatteOf(IMultiMatte& mattes, int component) {
    MultiMatteComponent description;
    mattes.GetComponent(component, description);
    ColorMatte matte{.idOn = description.idOn,
                     .id = description.idOn ? description.id : 0,
                     .isMaterial = description.idOn && description.isMaterial,
                     .include = description.include,
                     .nodes = {}};
    for (int i = 0; i < description.nodes.Count(); ++i) {
        if (INode* node = description.nodes[i]) matte.nodes.push_back(node);
    }
    std::sort(matte.nodes.begin(), matte.nodes.end());
    return matte;
}

Text NodeNames(const std::vector<INode*>& nodes) {
    std::vector<Text> names;
    names.reserve(nodes.size());
    for (INode* node : nodes)
        names.emplace_back(node->GetName());
    std::sort(names.begin(), names.end());
    Text text;
    for (std::size_t i = 0; i < std::min(names.size(), mostNodesNamed); ++i) {
        text += (i == 0 ? _M(" ") : _M(", ")) + names[i];
    }
    return names.size() > mostNodesNamed ? text + ellipsis : text;
}

Text NameOf(const ColorMatte& matte, const MatteWords& words, const MCHAR* elementName) {
    Text name = elementName;
    if (name == words.unnamed) name = words.base;
    if (matte.idOn)
        name += MSTR(matte.isMaterial ? words.materialID : words.objectID) + NumberText(matte.id);
    if (!matte.nodes.empty()) {
        if (matte.idOn) name += _M(" +");
        if (!matte.include) name += _M(" All but");
        name += NodeNames(matte.nodes);
    }
    if (name.size() <= longestName) return name;
    return name.substr(0, longestName - 3) + ellipsis;
}

}  // namespace

bool SplitMultiMatte(IRenderElement& element, MSTR& name, int component) {
    const MatteWords* words = WordsOf(element.ClassID());
    auto* mattes =
        words ? static_cast<IMultiMatte*>(element.GetInterface(MULTI_MATTE_INTERFACE)) : nullptr;
    if (!mattes) {
        constexpr std::array<const MCHAR*, 3> suffixes = {_M(" R"), _M(" G"), _M(" B")};
        name += suffixes[static_cast<std::size_t>(component)];
        return true;
    }
    const ColorMatte matte = MatteOf(*mattes, component);
    if (matte.IsNothing()) return false;
    for (int earlier = 0; earlier < component; ++earlier) {
        if (matte == MatteOf(*mattes, earlier)) return false;
    }
    name = MSTR(NameOf(matte, *words, name));
    return true;
}

}  // namespace effect
