#include "command/look.h"

#include <ostream>
#include <utility>

namespace command {
namespace {

// Of the environment: says where files of a moment go.
#ifdef _WIN32
constexpr const char* placeVariable = "TMP";
#else
constexpr const char* placeVariable = "TMPDIR";
#endif

}  // namespace

Look::Look(const std::string& path) : file(path), table(path) {}

host::VRayLook Look::ForFrameBuffer() {
    return {.correct = [this](BMM_Color_fl* pixels, int count) { table.Correct(pixels, count); },
            .writeTable =
                [this](std::ostream& stream) {
                    written = !folder.Path().empty() && table.Write(stream);
                    return written;
                }};
}

bool Look::TakeWritten() {
    return std::exchange(written, false);
}

std::string Look::WhyNotWritten() const {
    if (folder.Path().empty()) {
        return "no folder for its table could be made in " + folder.Fault() + "; set " +
               placeVariable + " to a folder that can be written";
    }
    return "its table could not be handed over in " + folder.Path() + "; make room there, or set " +
           placeVariable + " to another folder with a short path";
}

}  // namespace command
