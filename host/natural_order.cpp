// Compares names as people count: "Box2" comes before "box10".
#include <maxapi.h>

namespace {

// The small letter of a capital one, in the scripts that have both in ranges.
MCHAR Lower(MCHAR unit) {
    static constexpr struct {
        unsigned first;
        unsigned last;
        unsigned offset;
        // 2 where capital and small letters take turns.
        unsigned step;
    } CAPITALS[] = {
        {'A', 'Z', 32, 1},       {0x00c0, 0x00d6, 32, 1}, {0x00d8, 0x00de, 32, 1},  // Latin
        {0x0100, 0x012e, 1, 2},  {0x0132, 0x0136, 1, 2},  {0x0139, 0x0147, 1, 2},
        {0x014a, 0x0176, 1, 2},  {0x0179, 0x017d, 1, 2},  {0xff21, 0xff3a, 32, 1},
        {0x0391, 0x03a1, 32, 1}, {0x03a3, 0x03ab, 32, 1},  // Greek
        {0x0400, 0x040f, 80, 1}, {0x0410, 0x042f, 32, 1},  // Cyrillic
        {0x0531, 0x0556, 48, 1},                           // Armenian
    };
    for (const auto& range : CAPITALS) {
        if (unit >= range.first && unit <= range.last && (unit - range.first) % range.step == 0) {
            return static_cast<MCHAR>(unit + range.offset);
        }
    }
    return unit;
}

bool IsDigit(MCHAR unit) {
    return unit >= _M('0') && unit <= _M('9');
}

const MCHAR* SkipZeros(const MCHAR* digits) {
    while (*digits == _M('0')) {
        ++digits;
    }
    return digits;
}

const MCHAR* SkipDigits(const MCHAR* digits) {
    while (IsDigit(*digits)) {
        ++digits;
    }
    return digits;
}

// By value, however many digits. Both ends go behind the numbers.
int CompareNumbers(const MCHAR*& left, const MCHAR*& right) {
    const MCHAR* leftDigit = SkipZeros(left);
    const MCHAR* rightDigit = SkipZeros(right);
    left = SkipDigits(leftDigit);
    right = SkipDigits(rightDigit);
    if (left - leftDigit != right - rightDigit) {
        return left - leftDigit < right - rightDigit ? -1 : 1;
    }
    for (; leftDigit != left; ++leftDigit, ++rightDigit) {
        if (*leftDigit != *rightDigit) {
            return *leftDigit < *rightDigit ? -1 : 1;
        }
    }
    return 0;
}

}  // namespace

int MaxAlphaNumCompI(const MCHAR* left, const MCHAR* right) {
    while (*left && *right) {
        if (IsDigit(*left) && IsDigit(*right)) {
            if (const int order = CompareNumbers(left, right)) {
                return order;
            }
            continue;
        }
        const MCHAR a = Lower(*left++);
        const MCHAR b = Lower(*right++);
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    return *left ? 1 : *right ? -1 : 0;
}
