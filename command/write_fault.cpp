#include "command/write_fault.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "command/native_path.h"

namespace command {
namespace {

struct Advice {
    int systemError;
    const char* text;
};

constexpr Advice advices[] = {
    {ENOSPC, "free some space or choose another place with -o"},
#ifdef EDQUOT
    {EDQUOT, "free some space or choose another place with -o"},
#endif
    {EACCES, "change its permissions or choose another place with -o"},
    {EPERM, "change its permissions or choose another place with -o"},
    {EROFS, "choose another place with -o"},
    {ENOENT, "create its folder first or choose another with -o"},
    {ENOTDIR, "create its folder first or choose another with -o"},
    {EISDIR, "choose another name with -o"},
    {ENAMETOOLONG, "choose a shorter name with -o"},
    {EFBIG, "choose a place with -o that takes large files"},
    {EIO, "check the disk or choose another place with -o"},
};

std::string ReasonAndAdvice(int systemError) {
    if (systemError == 0) return "the system gave no reason; check the disk";
    const std::string reason = std::generic_category().message(systemError);
    for (const Advice& advice : advices) {
        if (advice.systemError == systemError) return reason + "; " + advice.text;
    }
    return reason + "; choose another place with -o";
}

// Windows tells no folder from what is locked.
int SharpenedError(int systemError, const std::string& document) {
    std::error_code fault;
    const bool isFolder =
        systemError == EACCES && std::filesystem::is_directory(Native(document), fault);
    return isFolder ? EISDIR : systemError;
}

// A document that was begun stays as far as it got.
std::string_view Remains(std::string_view entry) {
    return entry.starts_with("Error writing to ") ? "; what it holds now is incomplete" : "";
}

}  // namespace

std::string ExplainEntry(std::string_view entry, const std::string& document, int systemError,
                         const FaultOfImage& faultOfImage) {
    constexpr std::string_view shadowFault = "Error loading shadow pass image file: ";
    if (entry.starts_with(shadowFault) && entry.ends_with('!')) {
        entry.remove_prefix(shadowFault.size());
        entry.remove_suffix(1);
        const std::string image(entry);
        return image + ": " + faultOfImage(image) + "; " + document +
               " is saved without its shadow layer";
    }
    const bool isFileFault =
        entry.starts_with("Error writing to ") || entry.starts_with("Could not open/create ");
    const bool isMemoryFault = entry.starts_with("Not enough memory to write ");
    if (entry.ends_with('.') && (isFileFault || isMemoryFault)) entry.remove_suffix(1);
    std::string text(entry);
    if (isFileFault) {
        return text.append(": ")
            .append(ReasonAndAdvice(SharpenedError(systemError, document)))
            .append(Remains(entry));
    }
    if (isMemoryFault) return text + "; close other programs or save fewer bits a channel";
    const bool namesDocument = entry.find(document) != std::string_view::npos;
    return namesDocument || document.empty() ? text : document + ": " + text;
}

}  // namespace command
