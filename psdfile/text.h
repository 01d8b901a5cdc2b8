// Text as it stands in the file: 8-bit and UTF-16, with or without a count before it.
#pragma once

#include <cstdint>
#include <string>

#include "psdfile/part.h"

namespace psdfile {

// Common to both: at most 255 units are written with lengthFieldSize 1, at most 65535 with 2, and
// with any other the number of units is cut to its low 16 bits. An empty text whose fillSize
// exceeds its length field is fillSize zero bytes and nothing else.

class PSString : public PSDPart {
  public:
    PSString() = default;
    // A null text is an empty one. lengthFieldSize: 1, 2 or 4 bytes.
    explicit PSString(const char* text, std::uint8_t alignment = 1, bool writeInnerLength = false,
                      bool writeOuterLength = false, bool hasLength = false,
                      std::uint8_t lengthFieldSize = 1, std::uint8_t fillSize = 0);

    void WriteBody(std::ostream& stream) override;

    std::string text;  // in the code page of the system
    std::uint8_t fillSize = 0;
    std::uint8_t lengthFieldSize = 1;
    bool hasLength = false;
};

class PSUString : public PSDPart {
  public:
    PSUString() = default;
    // As PSString. With hasLength and nullCounted, a terminating zero is written and counted.
    explicit PSUString(const char16_t* text, std::uint8_t alignment = 1,
                       bool writeInnerLength = false, bool writeOuterLength = false,
                       bool hasLength = false, std::uint8_t lengthFieldSize = 4,
                       std::uint8_t fillSize = 0, bool nullCounted = false);

    void WriteBody(std::ostream& stream) override;

    std::u16string text;
    std::uint8_t fillSize = 0;
    std::uint8_t lengthFieldSize = 4;
    bool nullCounted = false;
    bool hasLength = false;
};

}  // namespace psdfile
