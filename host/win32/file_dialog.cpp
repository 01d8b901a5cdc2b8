#include "host/win32/file_dialog.h"

#include <windows.h>

#include <cderr.h>
#include <commdlg.h>
#include <cwchar>
#include <filesystem>
#include <string>
#include <vector>

namespace host {
namespace {

// Units with the terminator: the longest path that the system knows.
constexpr std::size_t pathUnits = 32768;

// Texts and patterns in turn, each with its terminator, and an empty one at the end.
std::wstring FilterText(const FilterList& filters) {
    std::wstring text;
    for (int filter = 0; filter < filters.Count(); ++filter) {
        for (const MSTR& part : {filters.Text(filter), filters.Pattern(filter)}) {
            text += part.data();
            text += L'\0';
        }
    }
    return text + L'\0';
}

}  // namespace

MSTR ExtensionOf(const MSTR& pattern) {
    const std::wstring text = pattern.data();
    const bool plain = text.size() > 2 && text.starts_with(L"*.") &&
                       text.find_first_of(L"*?;", 2) == std::wstring::npos;
    return plain ? MSTR(text.substr(1)) : MSTR();
}

int FilterOf(const MSTR& fileName, const FilterList& filters) {
    const std::wstring extension = std::filesystem::path(fileName.data()).extension().wstring();
    for (int filter = 0; !extension.empty() && filter < filters.Count(); ++filter) {
        if (_wcsicmp(ExtensionOf(filters.Pattern(filter)), extension.c_str()) == 0) return filter;
    }
    return 0;
}

MSTR WithExtension(const MSTR& fileName, int filter, int formerFilter, const FilterList& filters) {
    std::filesystem::path path(fileName.data());
    const std::wstring extension = path.extension().wstring();
    const auto isOf = [&](int other) {
        return _wcsicmp(ExtensionOf(filters.Pattern(other)).data(), extension.c_str()) == 0;
    };
    bool known = false;
    for (int other = 0; !extension.empty() && other < filters.Count(); ++other)
        known = known || isOf(other);
    const MSTR wanted = ExtensionOf(filters.Pattern(filter));
    if (wanted.isNull()) return fileName;
    if (!known) {
        path += wanted.data();
    } else if (filter != formerFilter && isOf(formerFilter)) {
        path.replace_extension(wanted.data());
    }
    return MSTR(path.wstring());
}

std::optional<MSTR> AskSaveFileName(const FileDialog& dialog) {
    const std::filesystem::path start(dialog.fileName.data());
    std::wstring folder = start.parent_path().wstring();
    if (folder.empty()) folder = dialog.folder.data();
    const std::wstring name = start.filename().wstring();
    std::vector<wchar_t> path(pathUnits);
    name.copy(path.data(), pathUnits - 1);

    OPENFILENAMEW asked{};
    asked.lStructSize = sizeof asked;
    asked.hwndOwner = dialog.parent;
    const std::wstring filters = FilterText(dialog.filters);
    if (dialog.filters.Count() > 0) {
        asked.lpstrFilter = filters.c_str();
        asked.nFilterIndex = static_cast<DWORD>(FilterOf(dialog.fileName, dialog.filters)) + 1;
    }
    asked.lpstrFile = path.data();
    asked.nMaxFile = static_cast<DWORD>(path.size());
    asked.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    asked.lpstrTitle = dialog.title.data();
    asked.Flags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                  OFN_PATHMUSTEXIST | OFN_NOTESTFILECREATE;
    BOOL chosen = GetSaveFileNameW(&asked);
    if (!chosen && CommDlgExtendedError() == FNERR_INVALIDFILENAME) {
        path.front() = L'\0';
        chosen = GetSaveFileNameW(&asked);
    }
    if (!chosen) return std::nullopt;
    const MSTR answer(path.data());
    if (asked.nFilterIndex == 0) return answer;
    return WithExtension(answer, static_cast<int>(asked.nFilterIndex) - 1,
                         FilterOf(dialog.fileName, dialog.filters), dialog.filters);
}

}  // namespace host
