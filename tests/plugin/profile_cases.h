// What the profile functions make of files, hand-edited ones among them, case by case. Windows' own
// functions and ours are held against the same list, so that a file may go from one to the other.
//
// Where Windows' documentation is silent, the list has what Wine does. Windows itself may see no
// UTF-8 mark and no big-endian text (its documentation knows ANSI and Unicode only), and may take
// quotes off the digits of a record.
#pragma once

#include <maxtypes.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace profile_cases {

// In every case the section is "S", the key "K" and the record this one, whose digits are 01ABFFAB:
// 0x01 + 0xAB + 0xFF is 0x1AB.
using Record = std::array<std::uint8_t, 3>;
inline constexpr Record stored{0x01, 0xAB, 0xFF};
// What a failed read leaves in place.
inline constexpr Record untouched{0x11, 0x22, 0x33};

inline std::string Utf16(std::u16string_view text, bool bigEndian = false) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t unit : text) {
        const auto low = static_cast<char>(unit & 0xFF);
        const auto high = static_cast<char>(unit >> 8);
        bytes += {bigEndian ? high : low, bigEndian ? low : high};
    }
    return bytes;
}

struct ReadCase {
    const char* name;
    std::string bytes;
    // Whether the record is there.
    bool isStored;
    // What the value is as text.
    std::basic_string<MCHAR> text;
};

inline std::vector<ReadCase> ReadCases() {
    const std::basic_string<MCHAR> digits = _M("01ABFFAB");
    const std::basic_string<MCHAR> none;
    return {
        {"the plain form", "[S]\r\nK=01ABFFAB\r\n", true, digits},

        {"lines that end in LF", "[S]\nK=01ABFFAB\n", true, digits},
        {"lines that end in CR", "[S]\rK=01ABFFAB\r", true, digits},
        {"lines that end in CR CR LF", "[S]\r\r\nK=01ABFFAB\r\r\n", true, digits},
        {"lines that end in LF CR", "[S]\n\rK=01ABFFAB\n\r", true, digits},
        {"lines that end in this and that", "[S]\nX=1\rK=01ABFFAB\r\n", true, digits},
        {"no end of the last line", "[S]\r\nK=01ABFFAB", true, digits},
        {"blank lines", "\r\n \t\r\n[S]\r\n\r\nK=01ABFFAB\r\n\r\n", true, digits},

        {"blanks around everything", "  [S]  \r\n\t K \t=\t 01ABFFAB \t\r\n", true, digits},
        {"other blanks", "[S]\r\n\fK\v=\f01ABFFAB\v\r\n", true, digits},
        {"Control-Z counts as a blank", "[S]\r\nX=1\r\n\x1A\r\nK=01ABFFAB\x1A\r\n", true, digits},
        {"blanks in the brackets", "[ S ]\r\nK=01ABFFAB\r\n", true, digits},
        {"a no-break space is a letter", "[S]\r\n\xA0K=01ABFFAB\r\n", false, none},
        {"a control is a letter", "[S]\r\n\x01K=01ABFFAB\r\n", false, none},
        {"a no-break space in UTF-16", Utf16(u"[S]\r\n\u00A0K=01ABFFAB\r\n"), false, none},
        {"an ideographic space in UTF-16", Utf16(u"[S]\r\nK\u3000=01ABFFAB\r\n"), false, none},
        {"a line separator ends no line", Utf16(u"[S]\r\nX=1\u2028K=01ABFFAB\r\n"), false, none},

        {"small letters", "[s]\r\nk=01ABFFAB\r\n", true, digits},
        {"small digits", "[S]\r\nK=01abffab\r\n", true, _M("01abffab")},
        {"a sign that is K in small letters", Utf16(u"[S]\r\n\u212A=01ABFFAB\r\n"), false, none},

        {"an empty file", "", false, none},
        {"no section", "K=01ABFFAB\r\n", false, none},
        {"an empty section", "[S]\r\n", false, none},
        {"another section", "[T]\r\nK=01ABFFAB\r\n", false, none},
        {"a longer section", "[S2]\r\nK=01ABFFAB\r\n", false, none},
        {"another section behind", "[S]\r\n[T]\r\nK=01ABFFAB\r\n", false, none},
        {"sections around it", "[A]\r\nK=00\r\n[S]\r\nK=01ABFFAB\r\n[Z]\r\nK=00\r\n", true, digits},
        {"another key", "[S]\r\nKK=01ABFFAB\r\nL=01ABFFAB\r\n", false, none},
        {"keys around it", "[S]\r\nA=00\r\nK=01ABFFAB\r\nZ=00\r\n", true, digits},
        {"no equals sign", "[S]\r\nK 01ABFFAB\r\n", false, none},
        {"no name", "[S]\r\n=01ABFFAB\r\n", false, none},
        {"a name in quotes", "[S]\r\n\"K\"=01ABFFAB\r\n", false, none},

        {"text behind the bracket", "[S] text\r\nK=01ABFFAB\r\n", true, digits},
        {"a comment behind the bracket", "[S];c\r\nK=01ABFFAB\r\n", true, digits},
        {"the last bracket counts", "[S]b]\r\nK=01ABFFAB\r\n", false, none},
        {"brackets in brackets", "[[S]]\r\nK=01ABFFAB\r\n", false, none},
        {"no closing bracket", "[S\r\nK=01ABFFAB\r\n", false, none},
        {"an open bracket ends no section", "[S]\r\n[T\r\nK=01ABFFAB\r\n", true, digits},
        {"text before the bracket", "x[S]\r\nK=01ABFFAB\r\n", false, none},

        {"a comment", "[S]\r\n;K=01ABFFAB\r\n", false, none},
        {"an indented comment", "[S]\r\n  ; K=01ABFFAB\r\n", false, none},
        {"a comment before it", "[S]\r\n;K=00\r\nK=01ABFFAB\r\n", true, digits},
        {"a section in a comment", ";[S]\r\nK=01ABFFAB\r\n", false, none},
        {"a comment behind it", "[S]\r\nK=01ABFFAB ;c\r\n", false, _M("01ABFFAB ;c")},
        {"text that is no key", "text\r\n[S]\r\nmore text\r\nK=01ABFFAB\r\n", true, digits},

        {"the first key counts", "[S]\r\nK=01ABFFAB\r\nK=02ABFFAC\r\n", true, digits},
        {"the first key counts, broken", "[S]\r\nK=broken\r\nK=01ABFFAB\r\n", false, _M("broken")},
        {"the first key counts, bare", "[S]\r\nK\r\nK=01ABFFAB\r\n", false, none},
        {"the first section counts", "[S]\r\nK=01ABFFAB\r\n[S]\r\nK=02ABFFAC\r\n", true, digits},
        {"the first section counts, small", "[s]\r\nX=1\r\n[S]\r\nK=01ABFFAB\r\n", false, none},
        {"the first section counts, empty", "[S]\r\n[S]\r\nK=01ABFFAB\r\n", false, none},

        {"a wrong checksum", "[S]\r\nK=01ABFFAC\r\n", false, _M("01ABFFAC")},
        {"an edited value", "[S]\r\nK=02ABFFAB\r\n", false, _M("02ABFFAB")},
        {"no value", "[S]\r\nK=\r\n", false, none},
        {"no checksum", "[S]\r\nK=01ABFF\r\n", false, _M("01ABFF")},
        {"two bytes", "[S]\r\nK=01ABAC\r\n", false, _M("01ABAC")},
        {"four bytes", "[S]\r\nK=01ABFF00AB\r\n", false, _M("01ABFF00AB")},
        {"a digit too many", "[S]\r\nK=01ABFFAB0\r\n", false, _M("01ABFFAB0")},
        {"a byte behind the checksum", "[S]\r\nK=01ABFFAB00\r\n", false, _M("01ABFFAB00")},
        {"a digit too few", "[S]\r\nK=01ABFFA\r\n", false, _M("01ABFFA")},
        {"two equals signs", "[S]\r\nK==01ABFFAB\r\n", false, _M("=01ABFFAB")},
        {"G is no digit", "[S]\r\nK=0GABFFBA\r\n", false, _M("0GABFFBA")},
        {"a blank is no digit", "[S]\r\nK=0 ABFFAA\r\n", false, _M("0 ABFFAA")},
        {"a sign is no digit", "[S]\r\nK=+1ABFFAB\r\n", false, _M("+1ABFFAB")},
        {"a prefix is no digit", "[S]\r\nK=0x01ABFFAB\r\n", false, _M("0x01ABFFAB")},
        {"a wide digit", Utf16(u"[S]\r\nK=\uFF101ABFFAB\r\n"), false, _M("\uFF101ABFFAB")},

        // Only of text are the quotes taken off.
        {"double quotes", "[S]\r\nK=\"01ABFFAB\"\r\n", false, digits},
        {"single quotes", "[S]\r\nK='01ABFFAB'\r\n", false, digits},
        {"blanks in quotes", "[S]\r\nK= \" a b \" \r\n", false, _M(" a b ")},
        {"a quote at the start", "[S]\r\nK=\"a\r\n", false, _M("\"a")},
        {"a quote at the end", "[S]\r\nK=a\"\r\n", false, _M("a\"")},
        {"two kinds of quotes", "[S]\r\nK=\"a'\r\n", false, _M("\"a'")},
        {"two pairs of quotes", "[S]\r\nK=\"\"a\"\"\r\n", false, _M("\"a\"")},
        {"a quote alone", "[S]\r\nK=\"\r\n", false, _M("\"")},
        {"nothing in quotes", "[S]\r\nK=\"\"\r\n", false, none},
        {"a comment behind quotes", "[S]\r\nK=\"a\";c\r\n", false, _M("\"a\";c")},
        {"blanks in text", "[S]\r\nK=a  b\tc\r\n", false, _M("a  b\tc")},

        {"UTF-16", Utf16(u"[S]\r\nK=01ABFFAB\r\n"), true, digits},
        {"UTF-16 with LF", Utf16(u"[S]\nK=01ABFFAB\n"), true, digits},
        {"UTF-16 without a last end", Utf16(u"[S]\r\nK=01ABFFAB"), true, digits},
        {"UTF-16, big-endian", Utf16(u"[S]\r\nK=01ABFFAB\r\n", true), true, digits},
        {"UTF-16 text", Utf16(u"[S]\r\nK=\u65E5\U0001F600\r\n"), false, _M("\u65E5\U0001F600")},
        {"UTF-16 of nothing", Utf16(u""), false, none},
        {"two byte order marks", Utf16(u"\uFEFF[S]\r\nK=01ABFFAB\r\n"), false, none},
        {"UTF-8 with a mark", "\xEF\xBB\xBF[S]\r\nK=01ABFFAB\r\n", true, digits},
        {"UTF-8 text", "\xEF\xBB\xBF[S]\r\nK=\xC3\xA4\xFF\r\n", false, _M("\u00E4\uFFFD")},
        {"text without a mark", "[S]\r\nK=\xE4\x80\x81\x9F\r\n", false,
         _M("\u00E4\u20AC\u0081\u0178")},
        {"UTF-8 without a mark", "[S]\r\nK=\xC3\xA4\r\n", false, _M("\u00C3\u00A4")},
    };
}

enum class Same {
    Bytes,
    // The system's functions may write the lines that they don't change anew: without blank lines
    // and blanks around names and values, and each with CR LF at its end. Ours leave them alone.
    Lines,
};

struct WriteCase {
    const char* name;
    // None: there is no file yet.
    std::optional<std::string> before;
    // What ours make of it.
    std::string after;
    // What of it is the same as the system's.
    Same same;
};

inline std::vector<WriteCase> WriteCases() {
    const std::string plain = "[S]\r\nK=01ABFFAB\r\n";
    return {
        {"no file", std::nullopt, plain, Same::Bytes},
        {"an empty file", "", plain, Same::Bytes},
        {"another value", "[S]\r\nK=00\r\n", plain, Same::Bytes},
        {"an empty value", "[S]\r\nK=\r\n", plain, Same::Bytes},
        {"a longer value", "[S]\r\nK=0102030405060F\r\nL=1\r\n", plain + "L=1\r\n", Same::Bytes},
        {"the same value", "[S]\nK = 01ABFFAB\n", "[S]\nK = 01ABFFAB\n", Same::Bytes},
        {"small digits", "[S]\r\nK=01abffab\r\n", plain, Same::Bytes},
        {"small letters", "[s]\r\nk=00\r\n", "[s]\r\nk=01ABFFAB\r\n", Same::Bytes},
        {"a value in quotes", "[S]\r\nK=\"01ABFFAB\"\r\n", plain, Same::Bytes},
        {"a value with a comment", "[S]\r\nK=00 ; c\r\n", plain, Same::Bytes},
        {"a bare key", "[S]\r\nK\r\nL=1\r\n", plain + "L=1\r\n", Same::Bytes},

        {"no key", "[S]\r\nA=1\r\n", "[S]\r\nA=1\r\nK=01ABFFAB\r\n", Same::Bytes},
        {"no key in the middle", "[R]\r\nA=1\r\n[S]\r\nB=2\r\n[T]\r\nC=3\r\n",
         "[R]\r\nA=1\r\n[S]\r\nB=2\r\nK=01ABFFAB\r\n[T]\r\nC=3\r\n", Same::Bytes},
        {"an empty section", "[S]\r\n[T]\r\nA=1\r\n", plain + "[T]\r\nA=1\r\n", Same::Bytes},
        {"no section", "[T]\r\nK=00\r\n", "[T]\r\nK=00\r\n" + plain, Same::Bytes},
        {"no section at all", "K=00\r\n", "K=00\r\n" + plain, Same::Bytes},
        {"no end of the last line", "[S]\r\nA=1", "[S]\r\nA=1\r\nK=01ABFFAB\r\n", Same::Bytes},
        {"no end of the last section", "[T]\r\nA=1", "[T]\r\nA=1\r\n" + plain, Same::Bytes},
        {"a section line alone", "[S]", plain, Same::Bytes},

        {"two keys", "[S]\r\nK=00\r\nK=01\r\n", plain + "K=01\r\n", Same::Bytes},
        {"two sections", "[S]\r\nA=1\r\n[S]\r\nK=00\r\n",
         "[S]\r\nA=1\r\nK=01ABFFAB\r\n[S]\r\nK=00\r\n", Same::Bytes},
        {"comments", "; top\r\n[S]\r\n; of K\r\nK=00\r\n; end\r\n",
         "; top\r\n[S]\r\n; of K\r\nK=01ABFFAB\r\n; end\r\n", Same::Bytes},
        {"a comment last", "[S]\r\nA=1\r\n; c\r\n[T]\r\n",
         "[S]\r\nA=1\r\n; c\r\nK=01ABFFAB\r\n[T]\r\n", Same::Bytes},
        {"comments only", "; only\r\n", "; only\r\n" + plain, Same::Bytes},
        {"an open bracket", "[S\r\nK=00\r\n", "[S\r\nK=00\r\n" + plain, Same::Bytes},
        {"text that is no key", "text\r\n[S]\r\nmore text\r\nK=00\r\n",
         "text\r\n[S]\r\nmore text\r\nK=01ABFFAB\r\n", Same::Bytes},
        {"ANSI letters", "[T]\r\nX=\xE4\x80\x81\r\n[S]\r\nK=00\r\n",
         "[T]\r\nX=\xE4\x80\x81\r\n" + plain, Same::Bytes},

        {"UTF-16", Utf16(u"[S]\r\nK=00\r\n"), Utf16(u"[S]\r\nK=01ABFFAB\r\n"), Same::Bytes},
        {"UTF-16 without the section", Utf16(u"[T]\r\nX=\u65E5\xD800\r\n"),
         Utf16(u"[T]\r\nX=\u65E5\xD800\r\n[S]\r\nK=01ABFFAB\r\n"), Same::Bytes},
        {"UTF-16 of nothing", Utf16(u""), Utf16(u"[S]\r\nK=01ABFFAB\r\n"), Same::Bytes},
        {"UTF-16, big-endian", Utf16(u"[S]\r\nK=00\r\n", true),
         Utf16(u"[S]\r\nK=01ABFFAB\r\n", true), Same::Bytes},
        {"UTF-16 with LF", Utf16(u"[S]\nA=1\n"), Utf16(u"[S]\nA=1\nK=01ABFFAB\n"), Same::Lines},
        {"UTF-8 with a mark", "\xEF\xBB\xBF[T]\r\nX=\xC3\xA4\r\n",
         "\xEF\xBB\xBF[T]\r\nX=\xC3\xA4\r\n" + plain, Same::Bytes},
        {"UTF-8 of nothing", "\xEF\xBB\xBF", "\xEF\xBB\xBF" + plain, Same::Bytes},

        {"lines that end in LF", "[T]\nX=1\n", "[T]\nX=1\n[S]\nK=01ABFFAB\n", Same::Lines},
        {"lines that end in CR", "[S]\rA=1\r", "[S]\rA=1\rK=01ABFFAB\r", Same::Lines},
        {"lines that end in this and that", "[S]\nA=1\r\nK=00\nB=2\r\n",
         "[S]\nA=1\r\nK=01ABFFAB\nB=2\r\n", Same::Lines},
        {"a last value without an end", "[S]\r\nK=00", "[S]\r\nK=01ABFFAB", Same::Lines},
        {"a last bare key without an end", "[S]\r\nK", "[S]\r\nK=01ABFFAB", Same::Lines},
        {"blanks around everything", "  [ S ] \r\n  K  =  00  \r\n A = 1 \r\n",
         "  [ S ] \r\n  K  =  01ABFFAB  \r\n A = 1 \r\n", Same::Lines},
        {"blanks without a value", "[S]\r\nK = \t\r\n", "[S]\r\nK =01ABFFAB \t\r\n", Same::Lines},
        {"text behind the bracket", "[S] ; c\r\nK=00\r\n", "[S] ; c\r\nK=01ABFFAB\r\n",
         Same::Lines},
        {"blank lines between sections", "\r\n[S]\r\n\r\nA=1\r\n\r\n[T]\r\nB=2\r\n",
         "\r\n[S]\r\n\r\nA=1\r\nK=01ABFFAB\r\n\r\n[T]\r\nB=2\r\n", Same::Lines},
        {"blank lines at the end", "[T]\r\nB=2\r\n\r\n", "[T]\r\nB=2\r\n\r\n" + plain, Same::Lines},
        {"Control-Z at the end", "[S]\r\nA=1\r\n\x1A", "[S]\r\nA=1\r\nK=01ABFFAB\r\n\x1A",
         Same::Lines},
    };
}

struct RefusedCase {
    const char* name;
    std::string bytes;
};

// Something else than a profile: nothing is read from it, and it isn't written to.
inline std::vector<RefusedCase> RefusedCases() {
    using namespace std::string_literals;
    const std::string plain = "[S]\r\nK=01ABFFAB\r\n";
    const std::size_t mebibyte = std::size_t{1} << 20;
    return {
        {"a NUL before the key", "[S]\r\n\0K=01ABFFAB\r\n"s},
        {"a NUL behind everything", plain + '\0'},
        {"UTF-16 without a mark", Utf16(u"[S]\r\nK=01ABFFAB\r\n").substr(2)},
        {"UTF-16 with a NUL", Utf16(u"[S]\r\nX=\0\r\nK=01ABFFAB\r\n"s)},
        {"UTF-16 with half a unit", Utf16(u"[S]\r\nK=01ABFFAB\r\n") + "x"},
        {"more than a mebibyte", plain + std::string(mebibyte + 1 - plain.size(), '\n')},
    };
}

}  // namespace profile_cases
