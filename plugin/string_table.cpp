#include "plugin/string_table.h"

namespace plugin {

const MCHAR* GetString(int) {
    return nullptr;
}

}  // namespace plugin
