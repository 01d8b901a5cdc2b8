#include "host/printable.h"

namespace host {

std::string Printable(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    bool gap = false;
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (code < 0x20 || code == 0x7f) {
            gap = true;
            continue;
        }
        if (gap && !line.empty() && line.back() != ' ' && letter != ' ') line += ' ';
        gap = false;
        line += letter;
    }
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    return line;
}

}  // namespace host
