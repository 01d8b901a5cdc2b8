// The panel program's menu, and the keys that stand for its items.
#pragma once

#include <windows.h>

namespace command {

struct PanelItem {
    enum Number : int {
        newScene = 100,
        openScene,
        saveScene,
        saveSceneAs,
        chooseRenderFile,
        renderNow,
        stopRender,
        openDocument,
        leave,
        undo,
        redo,
        showHelp,
        showAbout,
    };
};

// The caller's, as a window's menu the window's.
HMENU MakePanelMenu();
HACCEL MakePanelKeys();

// Gives "Undo" and "Redo" the names of their steps; empty for none.
void NameSteps(HMENU menu, const wchar_t* undoName, const wchar_t* redoName);

// Whether the key means something else to a field that is being typed into.
bool IsKeyOfEdits(const MSG& message);

}  // namespace command
