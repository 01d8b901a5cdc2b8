// The lists of object and material IDs that a user types: "1, 3 [Name], 5-8".
#pragma once

#include <maxtypes.h>
#include <nametab.h>
#include <tab.h>

namespace effect {

// IDs above this match no pixel: the G-Buffer holds them in 16 bits.
constexpr int highestID = 65535;

// Appends the list's IDs to `ids`, and as many names to `names`: empty, the name in brackets, or
// for a range with a name "Name ID:5". False when a part can't be understood; what stands before it
// has been read then. Null counts as empty, and an empty list can't be understood. IDs are 0 or
// above.
//
// Of a range the first 65536 IDs are taken: those left out are above highestID. A list ends, as one
// that can't be understood, before it would come to more than 2^20 IDs.
bool ParseIDList(const MCHAR* text, Tab<int>& ids, NameTab& names);

}  // namespace effect
