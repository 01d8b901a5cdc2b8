// The fixed 26 bytes at the start of the file.

#include "psdfile/file_header.h"

#include "psdfile/four_char_code.h"
#include "psdfile/length_field.h"
#include "psdfile/primitives.h"

namespace psdfile {

namespace {

constexpr std::uint16_t colorModeRGB = 3;

}  // namespace

void PSDFileHeader::WriteBody(std::ostream& stream) {
    stream << PSint32(FourCharCode("8BPS")) << PSint16(version);
    WriteZeros(stream, 6);
    stream << PSint16(channels) << PSint32(height) << PSint32(width) << PSint16(depth)
           << PSint16(colorModeRGB);
}

}  // namespace psdfile
