// Writes a document of two layers to the file named by the first argument, with nothing but what
// is installed.

#include <boost/make_shared.hpp>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <vector>

#include "psdbuilder/psdbuilder.h"
#include "psdfile/psdfile.h"

namespace {

constexpr std::uint16_t width = 64;
constexpr std::uint16_t height = 48;

// Grows from left to right, or stays at its first value.
class Ramp : public psdfile::PSDChannelImageDataSource {
  public:
    Ramp(std::uint8_t first, bool grows) {
        for (std::uint8_t x = 0; x < width; ++x) {
            row[x] = grows ? static_cast<std::uint8_t>(first + x) : first;
        }
    }
    const std::uint8_t* GetRow8(std::uint32_t /*row*/) override { return row.data(); }

  private:
    std::vector<std::uint8_t> row = std::vector<std::uint8_t>(width);
};

psdfile::PSDChannelImageDataSourcePtr Channel(std::uint8_t first, bool grows) {
    return boost::make_shared<Ramp>(first, grows);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: write_document FILE.psd\n";
        return 2;
    }
    psdbuilder::PSDBuilder builder(width, height, 8, 72, 1, psdfile::compressionRLE, 1, false);
    builder.AddRGBLayer("set/ramp", u"set/ramp", psdfile::BlendKey(7), 0, Channel(0, true),
                        Channel(64, true), Channel(128, true), Channel(255, false), {}, true,
                        false);
    builder.AddRGBLayer("flat", u"flat", psdfile::blendKeyNormal, 0, Channel(20, false),
                        Channel(30, false), Channel(40, false), {}, {}, true, false);
    builder.SetMergedImage(true, Channel(20, false), Channel(30, false), Channel(40, false), {});
    std::ofstream file(argv[1], std::ios::binary);
    file << builder;
    file.close();
    if (!file) {
        std::cerr << "could not write " << argv[1] << '\n';
        return 1;
    }
    return 0;
}
