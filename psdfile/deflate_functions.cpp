// The process-wide table of deflate functions.

#include "psdfile/deflate_functions.h"

#include <utility>

namespace psdfile {

namespace {

DeflateFunctions& Table() {
    static DeflateFunctions table = ZlibDeflateFunctions();
    return table;
}

}  // namespace

DeflateFunctions ZlibDeflateFunctions() {
    return {::deflateInit2_, ::deflate, ::deflateEnd};
}

DeflateFunctions CurrentDeflateFunctions() {
    return Table();
}

DeflateFunctions SetDeflateFunctions(const DeflateFunctions& functions) {
    return std::exchange(Table(), functions);
}

}  // namespace psdfile
