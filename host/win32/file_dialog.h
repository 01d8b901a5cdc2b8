// The system's dialog for the name of a file to write, as the host shows it.
#pragma once

#include "host/file_dialogs.h"

namespace host {

// Nothing when the user cancels. The dialog doesn't ask before an existing file is chosen: who
// writes the file does. The answer has an extension of the filters, as WithExtension gives it.
std::optional<MSTR> AskSaveFileName(const FileDialog& dialog);

// Of a pattern such as "*.psd" the extension with its point; empty for one that stands for several
// or any.
MSTR ExtensionOf(const MSTR& pattern);

// A name whose extension is none of the filters' ("shot", "shot.v2") gets that of `filter` behind
// it. One that still has that of `formerFilter`, with which the user began, has it replaced when
// `filter` is another: who only changes the kind of file means its extension. A filter of several
// extensions changes nothing.
MSTR WithExtension(const MSTR& fileName, int filter, int formerFilter, const FilterList& filters);

// The filter, from 0 on, that the name's extension is of; 0 when there is none.
int FilterOf(const MSTR& fileName, const FilterList& filters);

}  // namespace host
