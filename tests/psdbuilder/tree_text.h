// The layer tree as one line of text: sets with their children in brackets.
#pragma once

#include <boost/pointer_cast.hpp>
#include <string>

#include "psdbuilder/layers.h"

namespace psdbuilder {

// "A(B(C D) E)" is a set A of a set B, with two layers, and a layer E.
inline std::string TreeText(const PSDBuilderLayerContainer& container) {
    std::string text;
    for (const auto& child : container.children) {
        if (!text.empty()) text += ' ';
        text += child->name;
        if (const auto set = boost::dynamic_pointer_cast<PSDBuilderLayerSet>(child)) {
            text += '(' + TreeText(*set) + ')';
        }
    }
    return text;
}

}  // namespace psdbuilder
