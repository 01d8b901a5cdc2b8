// The panel program: shows and edits a scene's settings of the effect, and renders with them.
//
//     veltrane-panel [SCENE.json] [RENDER]
#include <windows.h>

#include <string>
#include <vector>

#include "command/failure.h"
#include "command/native_path.h"
#include "command/process.h"
#include "command/win32/panel_scene.h"
#include "command/win32/panel_window.h"
#include "host/text.h"

int main(int argc, char** argv) {
    try {
        wchar_t program[4096] = {};
        GetModuleFileNameW(nullptr, program, static_cast<DWORD>(std::size(program)));
        command::PanelScene scene(std::filesystem::path(program).parent_path() / "veltrane.dlv");
        for (const std::string& path : command::ProcessArguments(argc, argv)) {
            const bool isScene = command::Native(path).extension() == ".json";
            isScene ? scene.Open(path) : scene.UseRenderFile(path);
        }
        command::PanelWindow window(scene);
        return window.Run();
    } catch (const command::InputError& fault) {
        MessageBoxW(nullptr, host::FromUtf8(fault.what()).data(), L"veltrane",
                    MB_OK | MB_ICONERROR);
        return 1;
    }
}
