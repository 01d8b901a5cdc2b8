#include "sources/id_bounds.h"

namespace sources {

IDBounds nodeRenderIDBounds;
IDBounds mtlIDBounds;
IDBounds nodeIDBounds;

}  // namespace sources
