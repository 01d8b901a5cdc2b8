// What each kind of image resource holds.

#include "psdfile/image_resource_kinds.h"

#include "psdfile/fixed_point.h"

namespace psdfile {

namespace {

const char16_t* NameOrDefault(const char16_t* name) {
    return name == nullptr ? u"Adobe Photoshop" : name;
}

}  // namespace

PSDIRB_ResolutionInfo::PSDIRB_ResolutionInfo(double resolution) : PSDImageResourceBlock(1005) {
    constexpr std::uint16_t pixelsPerInch = 1;
    constexpr std::uint16_t shownInCentimetres = 2;
    for (int axis = 0; axis < 2; ++axis) {
        data.Add<PSint32>(FixedPoint16(resolution));
        data.Add<PSint16>(pixelsPerInch);
        data.Add<PSint16>(shownInCentimetres);
    }
}

PSDIRB_AlphaChannelNames::PSDIRB_AlphaChannelNames() : PSDImageResourceBlock(1006) {}

void PSDIRB_AlphaChannelNames::AddName(const char* channelName) {
    data.Add<PSString>(channelName, std::uint8_t{1}, false, false, true);
}

PSDIRB_UnicodeAlphaChannelNames::PSDIRB_UnicodeAlphaChannelNames() : PSDImageResourceBlock(1045) {}

void PSDIRB_UnicodeAlphaChannelNames::AddName(const char16_t* channelName) {
    auto& text = data.Add<PSUString>(channelName);
    text.hasLength = true;
    text.nullCounted = true;
}

PSDIRB_CopyrightFlag::PSDIRB_CopyrightFlag() : PSDImageResourceBlock(1034) {
    data.Add<PSint8>(std::uint8_t{0});
}

PSDIRB_ImageURL::PSDIRB_ImageURL() : PSDIRB_ImageURL("https://veltrane.example/") {}

PSDIRB_ImageURL::PSDIRB_ImageURL(const char* url) : PSDImageResourceBlock(1035) {
    data.Add<PSString>(url);
}

PSDIRB_ICCProfile::PSDIRB_ICCProfile() : PSDImageResourceBlock(1039) {}

void PSDIRB_ICCProfile::SetProfile(const void* profile, std::size_t size) {
    data.Clear();
    if (profile != nullptr && size > 0) data.Add<PSdata>(profile, size);
}

PSDIRB_VersionInfo::PSDIRB_VersionInfo() : PSDIRB_VersionInfo(1, true, nullptr, nullptr, 1) {}

PSDIRB_VersionInfo::PSDIRB_VersionInfo(std::uint32_t version, bool hasRealMergedData,
                                       const char16_t* writerName, const char16_t* readerName,
                                       std::uint32_t fileVersion)
    : PSDImageResourceBlock(1057) {
    data.Add<PSint32>(version);
    data.Add<PSint8>(static_cast<std::uint8_t>(hasRealMergedData ? 1 : 0));
    data.Add<PSUString>(NameOrDefault(writerName)).hasLength = true;
    data.Add<PSUString>(NameOrDefault(readerName)).hasLength = true;
    data.Add<PSint32>(fileVersion);
}

PSDIRB_PixelAspectRatio::PSDIRB_PixelAspectRatio(double ratio) : PSDImageResourceBlock(1064) {
    data.Add<PSint32>(1U);  // version
    data.Add<PSdouble32>(ratio);
}

}  // namespace psdfile
