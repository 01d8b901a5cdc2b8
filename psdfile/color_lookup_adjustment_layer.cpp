// The descriptor of a colour lookup.

#include "psdfile/color_lookup_adjustment_layer.h"

#include <array>

#include "psdfile/descriptor_items.h"
#include "psdfile/four_char_code.h"

namespace psdfile {

namespace {

constexpr std::array<const char*, 3> kindNames = {"3DLUT", "abstractProfile", "deviceLinkProfile"};

void WriteEnumerator(std::ostream& stream, const char* key, const char* type, const char* value) {
    WriteItemHead(stream, key, FourCharCode("enum"));
    WriteKey(stream, type);
    WriteKey(stream, value);
}

}  // namespace

void PSDColorLookupAdjustmentLayerLUT::WriteBody(std::ostream& stream) {
    WriteData(stream);
}

void PSDColorLookupAdjustmentLayerLUT::WriteData(std::ostream& stream) {
    if (data.GetSize() == 0) {
        stream << PSint8(' ');
        return;
    }
    stream << data;
}

PSDColorLookupAdjustmentLayer::PSDColorLookupAdjustmentLayer()
    : PSDLayerRecordExtraDataResourceBlock(FourCharCode("clrL")) {}

void PSDColorLookupAdjustmentLayer::WriteData(std::ostream& stream) {
    const bool hasLUT = lookupKind == lookup3DLUT;
    stream << version << descriptorVersion;
    WriteClass(stream, FourCharCode("null"), hasLUT ? 9U : 4U);

    WriteEnumerator(
        stream, "lookupType", "colorLookupType",
        kindNames.at(lookupKind < kindNames.size() ? lookupKind : lookupDeviceLinkProfile));
    WriteItemHead(stream, FourCharCode("Nm  "), FourCharCode("TEXT"));
    name.hasLength = true;
    name.lengthFieldSize = 4;
    name.nullCounted = true;
    stream << name;
    WriteItemHead(stream, FourCharCode("Dthr"), FourCharCode("bool"));
    stream << PSint8(1);
    WriteItemHead(stream, "profile", FourCharCode("tdta"));
    WriteProfile(stream);
    if (!hasLUT) return;

    WriteEnumerator(stream, "LUTFormat", "LUTFormatType", "LUTFormatCUBE");
    WriteEnumerator(stream, "dataOrder", "colorLookupOrder", "rgbOrder");
    WriteEnumerator(stream, "tableOrder", "colorLookupOrder", "bgrOrder");
    WriteItemHead(stream, "LUT3DFileData", FourCharCode("tdta"));
    stream << lut;
    // What readers take for the file that the data came from.
    WriteItemHead(stream, "LUT3DFileName", FourCharCode("TEXT"));
    stream << PSUString(u"M:\\Temp\\simple.cube", 1, false, false, true, 4, 0, true);
}

void PSDColorLookupAdjustmentLayer::WriteProfile(std::ostream& stream) {
    stream << profile;
}

}  // namespace psdfile
