// Compares names as people count: "Box2" comes before "box10".
#include <maxapi.h>

#include "host/letter_case.h"

namespace {

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
        const MCHAR a = host::LowerCase(*left++);
        const MCHAR b = host::LowerCase(*right++);
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    return *left ? 1 : *right ? -1 : 0;
}
