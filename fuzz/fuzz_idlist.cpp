// Lists of object and material IDs, as anybody may type them: IDs and names stay parallel, and no
// list makes more of them than there is room for.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "effect/id_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::basic_string<MCHAR> text(data, data + size);
    Tab<int> ids;
    NameTab names;
    effect::ParseIDList(text.c_str(), ids, names);
    if (ids.Count() != names.Count() || ids.Count() > 1 << 20) std::abort();
    for (int i = 0; i < ids.Count(); ++i) {
        if (ids[i] < 0) std::abort();
    }
    return 0;
}
