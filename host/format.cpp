#include "host/format.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <type_traits>

namespace host {
namespace {

using Text = std::basic_string<MCHAR>;

// Native is intmax_t, ptrdiff_t and size_t, which are of one width on every system of the host.
enum class Length { Default, Char, Short, Long, LongLong, Native };
static_assert(std::is_same_v<std::intmax_t, std::ptrdiff_t>);

// One "%..." of a format.
struct Conversion {
    std::string flags;
    // Below 0: none given.
    int width = -1;
    int precision = -1;
    Length length = Length::Default;
    MCHAR kind = 0;

    bool LeftAligned() const { return flags.find('-') != std::string::npos; }
};

// va_list is an array on some systems and decays when passed; in a struct it can be handed by
// reference everywhere.
struct Arguments {
    std::va_list list;
};

bool IsDigit(MCHAR unit) {
    return unit >= _M('0') && unit <= _M('9');
}

// Widths and precisions stop here, so that a broken format can't ask for gigabytes.
constexpr int MAX_FIELD = 4096;

int TakeNumber(const MCHAR*& at, Arguments& arguments) {
    if (*at == _M('*')) {
        ++at;
        return va_arg(arguments.list, int);
    }
    int number = 0;
    for (; IsDigit(*at); ++at) {
        number = number > MAX_FIELD ? number : number * 10 + static_cast<int>(*at - _M('0'));
    }
    return number;
}

bool Take(const MCHAR*& at, const char* word) {
    const MCHAR* end = at;
    for (; *word; ++word, ++end) {
        if (*end != static_cast<MCHAR>(*word)) {
            return false;
        }
    }
    at = end;
    return true;
}

Length TakeLength(const MCHAR*& at) {
    static constexpr struct {
        const char* word;
        Length length;
    } LENGTHS[] = {{"hh", Length::Char},  {"h", Length::Short},     {"ll", Length::LongLong},
                   {"l", Length::Long},   {"j", Length::Native},    {"z", Length::Native},
                   {"t", Length::Native}, {"I64", Length::LongLong}};
    for (const auto& entry : LENGTHS) {
        if (Take(at, entry.word)) {
            return entry.length;
        }
    }
    return Length::Default;
}

// `at` stands behind the "%".
Conversion TakeConversion(const MCHAR*& at, Arguments& arguments) {
    Conversion conversion;
    for (; *at == _M('-') || *at == _M('+') || *at == _M(' ') || *at == _M('#') || *at == _M('0');
         ++at) {
        conversion.flags += static_cast<char>(*at);
    }
    if (IsDigit(*at) || *at == _M('*')) {
        conversion.width = TakeNumber(at, arguments);
        if (conversion.width < 0) {
            conversion.flags += '-';
            conversion.width = conversion.width < -MAX_FIELD ? MAX_FIELD : -conversion.width;
        }
    }
    if (*at == _M('.')) {
        ++at;
        conversion.precision = TakeNumber(at, arguments);
    }
    conversion.width = conversion.width > MAX_FIELD ? MAX_FIELD : conversion.width;
    conversion.precision = conversion.precision > MAX_FIELD ? MAX_FIELD : conversion.precision;
    conversion.length = TakeLength(at);
    if (*at) {
        conversion.kind = *at++;
    }
    return conversion;
}

std::int64_t TakeSigned(Length length, Arguments& arguments) {
    switch (length) {
        case Length::Char:
            return static_cast<signed char>(va_arg(arguments.list, int));
        case Length::Short:
            return static_cast<short>(va_arg(arguments.list, int));
        case Length::Long:
            return va_arg(arguments.list, long);
        case Length::LongLong:
            return va_arg(arguments.list, long long);
        case Length::Native:
            return va_arg(arguments.list, std::ptrdiff_t);
        default:
            return va_arg(arguments.list, int);
    }
}

std::uint64_t TakeUnsigned(Length length, Arguments& arguments) {
    switch (length) {
        case Length::Char:
            return static_cast<unsigned char>(va_arg(arguments.list, unsigned));
        case Length::Short:
            return static_cast<unsigned short>(va_arg(arguments.list, unsigned));
        case Length::Long:
            return va_arg(arguments.list, unsigned long);
        case Length::LongLong:
            return va_arg(arguments.list, unsigned long long);
        case Length::Native:
            return va_arg(arguments.list, std::size_t);
        default:
            return va_arg(arguments.list, unsigned);
    }
}

// Numbers are ASCII, so the C library prints them.
template <class T>
void AppendNumber(Text& out, const Conversion& conversion, const char* length, T value) {
    std::string format = "%" + conversion.flags;
    if (conversion.width >= 0) {
        format += std::to_string(conversion.width);
    }
    if (conversion.precision >= 0) {
        format += '.' + std::to_string(conversion.precision);
    }
    format += length;
    format += static_cast<char>(conversion.kind);
    const int size = std::snprintf(nullptr, 0, format.c_str(), value);
    if (size < 0) {
        return;
    }
    std::string digits(static_cast<std::size_t>(size) + 1, '\0');
    std::snprintf(digits.data(), digits.size(), format.c_str(), value);
    out.append(digits.begin(), digits.end() - 1);
}

void AppendPadded(Text& out, const Conversion& conversion, const Text& text) {
    const auto width = static_cast<std::size_t>(conversion.width < 0 ? 0 : conversion.width);
    const std::size_t padding = width > text.size() ? width - text.size() : 0;
    out.append(conversion.LeftAligned() ? 0 : padding, _M(' '));
    out += text;
    out.append(conversion.LeftAligned() ? padding : 0, _M(' '));
}

Text Cut(const MCHAR* text, int precision) {
    Text cut;
    for (; *text && (precision < 0 || cut.size() < static_cast<std::size_t>(precision)); ++text) {
        cut += *text;
    }
    return cut;
}

// False for a conversion that isn't known.
bool AppendConversion(Text& out, const Conversion& conversion, Arguments& arguments) {
    switch (conversion.kind) {
        case _M('d'):
        case _M('i'):
            AppendNumber(out, conversion, "ll",
                         static_cast<long long>(TakeSigned(conversion.length, arguments)));
            return true;
        case _M('u'):
        case _M('o'):
        case _M('x'):
        case _M('X'):
            AppendNumber(
                out, conversion, "ll",
                static_cast<unsigned long long>(TakeUnsigned(conversion.length, arguments)));
            return true;
        case _M('f'):
        case _M('F'):
        case _M('e'):
        case _M('E'):
        case _M('g'):
        case _M('G'):
            AppendNumber(out, conversion, "", va_arg(arguments.list, double));
            return true;
        case _M('c'):
            AppendPadded(out, conversion, Text(1, static_cast<MCHAR>(va_arg(arguments.list, int))));
            return true;
        case _M('s'): {
            const MCHAR* text = va_arg(arguments.list, const MCHAR*);
            AppendPadded(out, conversion, Cut(text ? text : _M("(null)"), conversion.precision));
            return true;
        }
        case _M('%'):
            out += _M('%');
            return true;
        default:
            return false;
    }
}

}  // namespace

MSTR FormatV(const MCHAR* format, std::va_list list) {
    Arguments arguments;
    va_copy(arguments.list, list);
    Text out;
    while (*format) {
        if (*format != _M('%')) {
            out += *format++;
            continue;
        }
        const MCHAR* start = format++;
        if (!AppendConversion(out, TakeConversion(format, arguments), arguments)) {
            out.append(start, format);
        }
    }
    va_end(arguments.list);
    return MSTR(std::move(out));
}

MSTR Format(const MCHAR* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    MSTR text = FormatV(format, arguments);
    va_end(arguments);
    return text;
}

}  // namespace host
