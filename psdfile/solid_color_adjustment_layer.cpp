// One colour as a descriptor: an object "Clr " of class "RGBC" with three doubles.

#include "psdfile/solid_color_adjustment_layer.h"

#include <utility>

#include "psdfile/four_char_code.h"

namespace psdfile {

namespace {

// Keys and class names of four characters have a zero where others have their length.
void WriteShortKey(std::ostream& stream, std::uint32_t key) {
    stream << PSint32(0) << PSint32(key);
}

void WriteClass(std::ostream& stream, std::uint32_t name, std::uint32_t items) {
    stream << PSint32(1) << PSint16(0);  // a name for people: a terminator alone
    WriteShortKey(stream, name);
    stream << PSint32(items);
}

}  // namespace

PSDSolidColorAdjustmentLayer::PSDSolidColorAdjustmentLayer()
    : PSDLayerRecordExtraDataResourceBlock(FourCharCode("SoCo")) {}

void PSDSolidColorAdjustmentLayer::WriteData(std::ostream& stream) {
    stream << version;
    WriteClass(stream, FourCharCode("null"), 1);
    WriteShortKey(stream, FourCharCode("Clr "));
    stream << PSint32(FourCharCode("Objc"));
    WriteClass(stream, FourCharCode("RGBC"), 3);
    for (const auto& [component, level] :
         {std::pair(FourCharCode("Rd  "), &red), std::pair(FourCharCode("Grn "), &green),
          std::pair(FourCharCode("Bl  "), &blue)}) {
        WriteShortKey(stream, component);
        stream << PSint32(FourCharCode("doub")) << *level;
    }
}

void PSDSolidColorAdjustmentLayer::SetColor(double redLevel, double greenLevel, double blueLevel) {
    red.value = redLevel;
    green.value = greenLevel;
    blue.value = blueLevel;
}

}  // namespace psdfile
