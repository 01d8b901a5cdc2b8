// Names against patterns with wildcards.
#include <maxapi.h>

#include "host/letter_case.h"

namespace {

// Units of the character that begins here: 2 for a surrogate and its partner.
int CharacterLength(const MCHAR* text) {
    const bool pair = (text[0] & 0xfc00) == 0xd800 && (text[1] & 0xfc00) == 0xdc00;
    return pair ? 2 : 1;
}

}  // namespace

bool MatchPattern(const MSTR& text, const MSTR& pattern, bool ignoreCase) {
    const auto same = [ignoreCase](MCHAR left, MCHAR right) {
        return left == right || (ignoreCase && host::LowerCase(left) == host::LowerCase(right));
    };
    const MCHAR* at = text.data();
    const MCHAR* want = pattern.data();
    // Behind the last star, and where the text goes on that it left over. Only the last one is ever
    // lengthened: what fits the stars before it as early as it can leaves the most for it.
    const MCHAR* afterStar = nullptr;
    const MCHAR* starEnd = nullptr;
    while (*at) {
        if (*want == _M('*')) {
            afterStar = ++want;
            starEnd = at;
        } else if (*want == _M('?')) {
            ++want;
            at += CharacterLength(at);
        } else if (*want && same(*want, *at)) {
            ++want;
            ++at;
        } else if (afterStar) {
            want = afterStar;
            at = ++starEnd;
        } else {
            return false;
        }
    }
    while (*want == _M('*')) {
        ++want;
    }
    return !*want;
}
