// The image resources that a document may carry, one small class a kind.
#pragma once

#include <cstddef>
#include <cstdint>

#include "psdfile/channel_source.h"
#include "psdfile/image_resource_block.h"

namespace psdfile {

class PSDIRB_ResolutionInfo : public PSDImageResourceBlock {
  public:
    // Pixels per inch, kept in 16.16 fixed point: what doesn't fit is cut to the low 32 bits.
    explicit PSDIRB_ResolutionInfo(double resolution);
};

// Names of the alpha channels in the system's code page.
class PSDIRB_AlphaChannelNames : public PSDImageResourceBlock {
  public:
    PSDIRB_AlphaChannelNames();
    void AddName(const char* name);
};

// The same names in UTF-16.
class PSDIRB_UnicodeAlphaChannelNames : public PSDImageResourceBlock {
  public:
    PSDIRB_UnicodeAlphaChannelNames();
    void AddName(const char16_t* name);
};

// Says that the picture isn't marked as copyrighted.
class PSDIRB_CopyrightFlag : public PSDImageResourceBlock {
  public:
    PSDIRB_CopyrightFlag();
};

class PSDIRB_ImageURL : public PSDImageResourceBlock {
  public:
    PSDIRB_ImageURL();
    explicit PSDIRB_ImageURL(const char* url);
};

class PSDIRB_ICCProfile : public PSDImageResourceBlock {
  public:
    PSDIRB_ICCProfile();  // without a profile, and then left out of the file
    // Takes a copy. Null data or a size of 0 leaves the block without a profile.
    void SetProfile(const void* profile, std::size_t size);
};

class PSDIRB_VersionInfo : public PSDImageResourceBlock {
  public:
    // Version 1, real merged data, both names "Adobe Photoshop", file version 1.
    PSDIRB_VersionInfo();
    // A null name becomes "Adobe Photoshop".
    PSDIRB_VersionInfo(std::uint32_t version, bool hasRealMergedData, const char16_t* writerName,
                       const char16_t* readerName, std::uint32_t fileVersion);
};

class PSDIRB_PixelAspectRatio : public PSDImageResourceBlock {
  public:
    explicit PSDIRB_PixelAspectRatio(double ratio);  // width over height of a pixel
};

}  // namespace psdfile
