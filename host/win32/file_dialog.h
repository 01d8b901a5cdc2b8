// The system's dialog for the name of a file to write, as the host shows it.
#pragma once

#include "host/file_dialogs.h"

namespace host {

// Nothing when the user cancels. The dialog doesn't ask before an existing file is chosen: who
// writes the file does. A name without an extension gets that of the filter that was chosen.
std::optional<MSTR> AskSaveFileName(const FileDialog& dialog);

// Of a pattern such as "*.psd" the extension with its point; empty for one that stands for several
// or any.
MSTR ExtensionOf(const MSTR& pattern);

// The filter, from 0 on, that the name's extension is of; 0 when there is none.
int FilterOf(const MSTR& fileName, const FilterList& filters);

}  // namespace host
