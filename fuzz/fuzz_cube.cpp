// Colour tables that anybody may have written: one loads whole or not at all, and what has loaded
// can be saved and loaded again without a change.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "psdfile/cube_lut.h"

namespace {

using psdfile::CubeLUT;

void Require(bool condition) {
    if (!condition) std::abort();
}

bool IsFinite(const CubeLUT::Row& row) {
    return std::all_of(row.begin(), row.end(), [](double value) { return std::isfinite(value); });
}

void CheckTable(const CubeLUT& lut) {
    Require(lut.lut1D.empty() != lut.lut3D.empty());
    Require(IsFinite(lut.domainMin) && IsFinite(lut.domainMax));
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Require(lut.domainMin[axis] < lut.domainMax[axis]);
    }
    Require(std::all_of(lut.lut1D.begin(), lut.lut1D.end(), IsFinite));
    for (const auto& greens : lut.lut3D) {
        Require(greens.size() == lut.lut3D.size());
        for (const auto& blues : greens) {
            Require(blues.size() == lut.lut3D.size());
            Require(std::all_of(blues.begin(), blues.end(), IsFinite));
        }
    }
}

// A title that is too long for a first line, or ends it, is a table's that doesn't load again.
bool CanBeSaved(const std::string& title) {
    return title.size() < 200 && title.find_first_of("\r\n") == std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream input(std::string(data, data + size));
    CubeLUT lut;
    const int status = lut.LoadCubeFile(input);
    Require(status == lut.status);
    if (status != CubeLUT::OK) return 0;
    CheckTable(lut);
    if (!CanBeSaved(lut.title)) return 0;
    std::stringstream stream;
    stream.precision(17);
    Require(lut.SaveCubeFile(stream) == CubeLUT::OK);
    CubeLUT again;
    Require(again.LoadCubeFile(stream) == CubeLUT::OK);
    Require(again.title == lut.title);
    Require(again.domainMin == lut.domainMin && again.domainMax == lut.domainMax);
    Require(again.lut1D == lut.lut1D && again.lut3D == lut.lut3D);
    return 0;
}
