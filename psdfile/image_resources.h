// Section 3 of the file: the list of image resources.
#pragma once

#include "psdfile/image_resource_kinds.h"
#include "psdfile/part_list.h"

namespace psdfile {

class PSDImageResources : public PSDPartList {
  public:
    PSDImageResources();

    // The Unicode names are left out unless every alpha channel has one.
    void WriteBody(std::ostream& stream) override;

    SharedPSDPartList blocks;  // a copyright flag first
    PSDIRB_AlphaChannelNames alphaNames;
    PSDIRB_UnicodeAlphaChannelNames unicodeAlphaNames;
    PSDIRB_ICCProfile iccProfile;
};

}  // namespace psdfile
