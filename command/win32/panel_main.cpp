// The panel program: shows and edits a scene's settings of the effect, and renders with them.
//
//     veltrane-panel [SCENE.json] [RENDER]
#include <windows.h>

#include <exception>
#include <string>

#include "command/process.h"
#include "command/win32/panel_scene.h"
#include "command/win32/panel_window.h"
#include "command/win32/program_folder.h"
#include "host/text.h"

int main(int argc, char** argv) {
    try {
        command::MakeConfigurationFolder();
        command::PanelScene scene(command::ProgramFolder() / "veltrane.dlv");
        for (const std::string& path : command::ProcessArguments(argc, argv)) {
            command::IsSceneFile(path) ? scene.Open(path) : scene.UseRenderFile(path);
        }
        // The same words start the program with the same scene again.
        scene.TakeAsUnchanged();
        command::PanelWindow window(scene);
        return window.Run();
    } catch (const std::exception& fault) {
        MessageBoxW(nullptr, host::FromUtf8(fault.what()).data(), L"veltrane",
                    MB_OK | MB_ICONERROR);
        return 1;
    }
}
