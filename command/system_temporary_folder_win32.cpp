#include <windows.h>

#include "command/native_path.h"
#include "command/system_temporary_folder.h"

namespace command {
namespace {

// The first that GetTempPath looks at.
constexpr const wchar_t* variable = L"TMP";

std::optional<std::wstring> Value() {
    std::wstring value(GetEnvironmentVariableW(variable, nullptr, 0), L'\0');
    if (value.empty()) return std::nullopt;
    value.resize(GetEnvironmentVariableW(variable, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

}  // namespace

SystemTemporaryFolder::SystemTemporaryFolder(const std::string& folder) {
    if (folder.empty()) return;
    before = Value();
    changed = SetEnvironmentVariableW(variable, Native(folder).c_str()) != 0;
}

SystemTemporaryFolder::~SystemTemporaryFolder() {
    if (changed) SetEnvironmentVariableW(variable, before ? before->c_str() : nullptr);
}

}  // namespace command
