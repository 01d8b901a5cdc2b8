// A frame whose groups add fills of one colour.
#pragma once

#include <stdexcept>
#include <vector>

#include "psdfile/solid_color_adjustment_layer.h"
#include "tests/effect/document_frame.h"

class FillFrameTest : public DocumentFrameTest {
  protected:
    // The document's only layer, which is a fill.
    const psdbuilder::PSDBuilderAdjustmentLayer& Fill() {
        if (Document().children.size() != 1) throw std::logic_error("not one layer");
        return dynamic_cast<const psdbuilder::PSDBuilderAdjustmentLayer&>(
            *Document().children.front());
    }
    // Red, green, blue.
    static std::vector<double> LevelsOf(const psdbuilder::PSDBuilderAdjustmentLayer& layer) {
        const auto& fill =
            dynamic_cast<const psdfile::PSDSolidColorAdjustmentLayer&>(*layer.adjustment);
        return {fill.red.value, fill.green.value, fill.blue.value};
    }
};
