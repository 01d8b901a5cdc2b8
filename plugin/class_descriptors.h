// The classes of the library.
#pragma once

#include <iparamb2.h>

#include <span>

namespace plugin {

// Those that it offers to the host, in the order of LibClassDesc's numbers. They live as long as
// the library. Names that come from the string table (string_table.h) are null before the library
// is attached.
std::span<ClassDesc* const> ClassDescriptors();

// The writer of "PSD" files that writes nothing. There to be made by its ids, and not offered.
ClassDesc& PSDExportBitmapIODescriptor();

}  // namespace plugin
