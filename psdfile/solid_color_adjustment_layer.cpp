// One colour as a descriptor: an object "Clr " of class "RGBC" with three doubles.

#include "psdfile/solid_color_adjustment_layer.h"

#include "psdfile/descriptor_items.h"
#include "psdfile/four_char_code.h"

namespace psdfile {

PSDSolidColorAdjustmentLayer::PSDSolidColorAdjustmentLayer()
    : PSDLayerRecordExtraDataResourceBlock(FourCharCode("SoCo")) {}

void PSDSolidColorAdjustmentLayer::WriteData(std::ostream& stream) {
    constexpr std::uint32_t number = FourCharCode("doub");
    stream << version;
    WriteClass(stream, FourCharCode("null"), 1);
    WriteItemHead(stream, FourCharCode("Clr "), FourCharCode("Objc"));
    WriteClass(stream, FourCharCode("RGBC"), 3);
    WriteItemHead(stream, FourCharCode("Rd  "), number);
    stream << red;
    WriteItemHead(stream, FourCharCode("Grn "), number);
    stream << green;
    WriteItemHead(stream, FourCharCode("Bl  "), number);
    stream << blue;
}

void PSDSolidColorAdjustmentLayer::SetColor(double redLevel, double greenLevel, double blueLevel) {
    red.value = redLevel;
    green.value = greenLevel;
    blue.value = blueLevel;
}

}  // namespace psdfile
