#include "effect/id_list.h"

#include <limits>
#include <optional>
#include <string>

#include "effect/text.h"

namespace effect {
namespace {

// Far beyond the layers that a document can hold, and soon done.
constexpr int mostIDsOfRange = highestID + 1;
constexpr int mostIDs = 1 << 20;

// What stands between two commas.
struct Token {
    std::optional<int> first;
    std::optional<int> last;
    std::optional<std::basic_string<MCHAR>> name;
};

enum class Step { Next, EndOfToken, EndOfText, Fault };

constexpr bool IsBlank(MCHAR unit) {
    return unit == _M(' ') || unit == _M('\t');
}
constexpr bool IsDigit(MCHAR unit) {
    return unit >= _M('0') && unit <= _M('9');
}

// Empty, with `text` somewhere in the number, for one that is too large.
std::optional<int> ReadNumber(const MCHAR*& text) {
    constexpr int largest = std::numeric_limits<int>::max();
    int number = 0;
    for (; IsDigit(*text); ++text) {
        const int digit = *text - _M('0');
        if (number > (largest - digit) / 10) return {};
        number = number * 10 + digit;
    }
    return number;
}

Step TakeNumber(const MCHAR*& text, Token& token) {
    if (token.name) return Step::Fault;
    const std::optional<int> number = ReadNumber(text);
    if (!number) return Step::Fault;
    (token.first ? token.last : token.first) = number;
    return Step::Next;
}

// `text` stands on the opening bracket.
Step TakeName(const MCHAR*& text, Token& token) {
    if (token.name) return Step::Fault;
    const MCHAR* start = ++text;
    for (; *text != _M(']'); ++text) {
        if (!*text || *text == _M('[')) return Step::Fault;
    }
    token.name.emplace(start, text++);
    return Step::Next;
}

// Leaves `text` behind what it took.
Step ReadOn(const MCHAR*& text, Token& token) {
    if (IsBlank(*text)) {
        ++text;
        return Step::Next;
    }
    if (IsDigit(*text)) return TakeNumber(text, token);
    if (!token.first) return Step::Fault;
    switch (*text) {
        case _M('-'):
            ++text;
            return Step::Next;
        case _M('['):
            return TakeName(text, token);
        case _M(','):
            ++text;
            return Step::EndOfToken;
        case _M('\0'):
            return Step::EndOfText;
        default:
            return Step::Fault;
    }
}

bool AppendToken(const Token& token, Tab<int>& ids, NameTab& names) {
    const MSTR name(token.name.value_or(std::basic_string<MCHAR>()));
    const int first = *token.first;
    if (!token.last) {
        if (ids.Count() >= mostIDs) return false;
        ids.Append(1, &first);
        names.AddName(name);
        return true;
    }
    if (*token.last < first) return false;
    for (int i = 0; i <= *token.last - first && i < mostIDsOfRange; ++i) {
        if (ids.Count() >= mostIDs) return false;
        const int id = first + i;
        ids.Append(1, &id);
        names.AddName(name.isNull() ? name : name + _M(" ID:") + NumberText(id));
    }
    return true;
}

}  // namespace

bool ParseIDList(const MCHAR* text, Tab<int>& ids, NameTab& names) {
    if (!text) return false;
    for (Step step = Step::EndOfToken; step == Step::EndOfToken;) {
        Token token;
        do {
            step = ReadOn(text, token);
        } while (step == Step::Next);
        if (step == Step::Fault || !AppendToken(token, ids, names)) return false;
    }
    return true;
}

}  // namespace effect
