#include "plugin/post_load_migration.h"

namespace plugin {

PostLoadCallback* MakePostLoadCallback(effect::PSDOutput&) {
    return nullptr;
}

}  // namespace plugin
