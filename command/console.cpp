#include "command/console.h"

#include <algorithm>
#include <cstdint>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

#include "command/printable.h"

namespace command {
namespace {

constexpr int barWidth = 40;

void Put(std::FILE* stream, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stream);
}

}  // namespace

bool IsTerminal(std::FILE* stream) {
#ifdef _WIN32
    // _isatty takes NUL for a terminal too.
    DWORD mode = 0;
    const std::intptr_t handle = _get_osfhandle(_fileno(stream));
    return GetConsoleMode(reinterpret_cast<HANDLE>(handle), &mode) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

void Console::Error(std::string_view text) {
    Line(err, "veltrane: error: ", text);
}

void Console::Warning(std::string_view text) {
    if (!quiet) Line(err, "veltrane: warning: ", text);
}

void Console::Say(std::string_view text) {
    if (!quiet) Line(out, "", text);
}

void Console::Write(std::string_view text) {
    Put(out, text);
    std::fflush(out);
}

void Console::Line(std::FILE* stream, std::string_view before, std::string_view text) {
    ClearBar();
    Put(stream, std::string(before) + Printable(text) + "\n");
    std::fflush(stream);
}

void Console::Progress(int percent) {
    if (quiet || style == ProgressStyle::None) return;
    highestPercent = std::max(highestPercent, percent);
    if (shownPercent == highestPercent) return;
    shownPercent = highestPercent;
    const std::string number = std::to_string(shownPercent) + "%";
    if (style == ProgressStyle::Lines) {
        Put(out, "PROGRESS: " + number + "\n");
        std::fflush(out);
        return;
    }
    const auto full = static_cast<std::size_t>(shownPercent * barWidth / 100);
    Put(err, "\r[" + std::string(full, '#') + std::string(barWidth - full, '.') + "] " + number);
    std::fflush(err);
    barShown = true;
}

void Console::ClearBar() {
    if (!barShown) return;
    Put(err, "\r" + std::string(barWidth + 7, ' ') + "\r");
    std::fflush(err);
    barShown = false;
    shownPercent = -1;
}

}  // namespace command
