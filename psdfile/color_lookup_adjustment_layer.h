// A layer that sends the colours below it through a table.
#pragma once

#include <cstdint>

#include "psdfile/color_lookup_profile.h"
#include "psdfile/layer_blocks.h"
#include "psdfile/text.h"

namespace psdfile {

enum ColorLookupKind : std::uint32_t {
    lookup3DLUT = 0,
    lookupAbstractProfile = 1,
    lookupDeviceLinkProfile = 2,
};

// The text of a .cube file; a blank for none.
class PSDColorLookupAdjustmentLayerLUT : public PSDPart {
  public:
    PSDColorLookupAdjustmentLayerLUT() { writeOuterLength = true; }

    void WriteBody(std::ostream& stream) override;
    virtual void WriteData(std::ostream& stream);

    PSdata data;
};

class PSDColorLookupAdjustmentLayer : public PSDLayerRecordExtraDataResourceBlock {
  public:
    PSDColorLookupAdjustmentLayer();

    void WriteData(std::ostream& stream) override;
    // The profile part with its length.
    virtual void WriteProfile(std::ostream& stream);

    // Of ColorLookupKind; any other number is written as lookupDeviceLinkProfile.
    std::uint32_t lookupKind = lookupDeviceLinkProfile;
    PSint16 version{1};
    PSint32 descriptorVersion{16};
    // Of the table, as people see it. Writing sets its length fields.
    PSUString name{u"veltrane"};
    // Written with lookup3DLUT only.
    PSDColorLookupAdjustmentLayerLUT lut;
    PSDColorLookupAdjustmentLayerICCProfile profile;
};

}  // namespace psdfile
