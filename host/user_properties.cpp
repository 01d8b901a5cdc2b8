#include "host/user_properties.h"

#include <algorithm>
#include <string_view>

#include "host/letter_case.h"

namespace host {
namespace {

using Text = std::basic_string_view<MCHAR>;

Text Trimmed(Text text) {
    constexpr Text BLANKS = _M(" \t");
    const std::size_t first = text.find_first_not_of(BLANKS);
    return first == Text::npos ? Text()
                               : text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

bool Same(Text left, Text right) {
    return std::ranges::equal(left, right, {}, LowerCase, LowerCase);
}

bool IsTrue(Text value) {
    if (Same(value, _M("true")) || Same(value, _M("yes")) || Same(value, _M("on"))) {
        return true;
    }
    if (!value.empty() && (value.front() == _M('-') || value.front() == _M('+'))) {
        value.remove_prefix(1);
    }
    return value.find_first_not_of(_M("0123456789")) == Text::npos &&
           value.find_first_not_of(_M('0')) != Text::npos;
}

}  // namespace

std::optional<bool> FindUserPropertyBool(const MSTR& properties, const MSTR& name) {
    Text rest(properties.data(), static_cast<std::size_t>(properties.Length()));
    const Text wanted = Trimmed(name.data());
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(_M("\r\n")), rest.size());
        const Text line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        const std::size_t equals = line.find(_M('='));
        if (equals != Text::npos && Same(Trimmed(line.substr(0, equals)), wanted)) {
            return IsTrue(Trimmed(line.substr(equals + 1)));
        }
    }
    return std::nullopt;
}

}  // namespace host
