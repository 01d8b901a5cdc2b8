#include <windows.h>

#include "command/system_message.h"
#include "host/text.h"

namespace command {

// The standard library's own texts of the system's faults are in the system's code page.
std::string SystemMessage(const std::error_code& fault) {
    if (fault.category() != std::system_category()) return fault.message();
    wchar_t text[512] = {};
    constexpr DWORD room = 511;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       static_cast<DWORD>(fault.value()), 0, text, room, nullptr);
    std::string message = host::ToUtf8(length > 0 ? text : L"");
    message.erase(message.find_last_not_of("\r\n .") + 1);
    return message.empty() ? "system error " + std::to_string(fault.value()) : message;
}

}  // namespace command
