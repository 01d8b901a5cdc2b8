// The numbers and raw bytes that all larger parts are made of; numbers are big-endian in the file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "psdfile/big_endian.h"
#include "psdfile/length_field.h"
#include "psdfile/part.h"

namespace psdfile {

// A number that writes itself in sizeof(T) bytes. Values computed at write time go through a
// temporary of these, so writing them allocates nothing.
template <class T>
class PSDNumber : public PSDPart {
  public:
    PSDNumber() = default;
    explicit PSDNumber(T number) : value(number) {}

    void WriteBody(std::ostream& stream) override {
        std::array<std::uint8_t, sizeof(T)> bytes;
        StoreBigEndian(value, bytes.data());
        WriteBytes(stream, bytes.data(), bytes.size());
    }

    T value{};
};

using PSint8 = PSDNumber<std::uint8_t>;
using PSint16 = PSDNumber<std::uint16_t>;
using PSint32 = PSDNumber<std::uint32_t>;
using PSint64 = PSDNumber<std::uint64_t>;
// The digits of these two are half the width in bits: 4 and 8 bytes in the file.
using PSfloat16 = PSDNumber<float>;
using PSdouble32 = PSDNumber<double>;

// Bytes that are written as they stand, always the part's own copy.
class PSdata : public PSDPart {
  public:
    PSdata() = default;
    PSdata(const void* data, std::size_t size) { SetData(data, size); }

    // data may be null if size is 0.
    void SetData(const void* data, std::size_t size);
    [[nodiscard]] virtual std::uint64_t GetSize() const { return bytes.size(); }

    void WriteBody(std::ostream& stream) override;

  private:
    std::vector<std::uint8_t> bytes;
};

}  // namespace psdfile
