#include "host/letter_case.h"

namespace host {

MCHAR LowerCase(MCHAR unit) {
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

}  // namespace host
