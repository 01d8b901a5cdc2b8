// The dialogs in which the user chooses a file: answered by whoever shows them.
#pragma once

#include <functional>
#include <optional>

#include <maxapi.h>

namespace host {

struct FileDialog {
    MSTR title;
    // The full path of the file that the dialog starts with; may be empty.
    MSTR fileName;
    // Where it starts for a name without a folder.
    MSTR folder;
    FilterList filters;
    HWND parent = nullptr;
};

// The path that the user chose; nothing when the user cancels. An empty one: nobody is there, and
// every dialog is cancelled.
using FileDialogResponder = std::function<std::optional<MSTR>(const FileDialog&)>;

}  // namespace host
