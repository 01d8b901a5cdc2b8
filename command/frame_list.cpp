#include "command/frame_list.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "command/failure.h"

namespace command {
namespace {

// Reads the list from left to right; complaints tell how far it came.
class FrameListReader {
  public:
    explicit FrameListReader(std::string_view text) : list(text) {}

    bool AtEnd() const { return position == list.size(); }

    bool Take(char letter) {
        if (AtEnd() || list[position] != letter) return false;
        ++position;
        return true;
    }

    void SkipBlanks() {
        while (Take(' ')) {
        }
    }

    int Number(const char* what, int lowest, int highest) {
        int value = 0;
        const char* begin = list.data() + position;
        const auto [end, fault] = std::from_chars(begin, list.data() + list.size(), value);
        if (fault == std::errc::invalid_argument) Complain(std::string("expected ") + what);
        if (fault != std::errc() || value < lowest || value > highest) {
            Complain(std::string(what) + " must lie between " + std::to_string(lowest) + " and " +
                     std::to_string(highest));
        }
        position += static_cast<std::size_t>(end - begin);
        return value;
    }

    [[noreturn]] void Complain(const std::string& fault) const {
        throw UsageError("--frames " + std::string(list) + ": " + fault + ", at character " +
                         std::to_string(position + 1) +
                         "; a list of frames looks like 1-10,20-40x2");
    }

  private:
    std::string_view list;
    std::size_t position = 0;
};

}  // namespace

std::vector<int> ParseFrames(std::string_view list) {
    std::vector<int> frames;
    FrameListReader reader(list);
    do {
        reader.SkipBlanks();
        const int first = reader.Number("a frame number", firstFrame, lastFrame);
        int last = first;
        int step = 1;
        if (reader.Take('-')) {
            last = reader.Number("the last frame of the range", firstFrame, lastFrame);
            if (last < first) reader.Complain("the range runs backwards");
            if (reader.Take('x')) step = reader.Number("the step", 1, lastFrame - firstFrame);
        }
        if (frames.size() + static_cast<std::size_t>((last - first) / step) >= mostFrames) {
            reader.Complain("more than " + std::to_string(mostFrames) + " frames");
        }
        for (int frame = first; frame <= last; frame += step)
            frames.push_back(frame);
        reader.SkipBlanks();
    } while (reader.Take(','));
    if (!reader.AtEnd()) reader.Complain("expected a comma");

    std::sort(frames.begin(), frames.end());
    frames.erase(std::unique(frames.begin(), frames.end()), frames.end());
    return frames;
}

}  // namespace command
