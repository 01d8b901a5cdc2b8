// The panel's part in the library.
#pragma once

namespace ui {

// From now on the effect's rollups and dialogs are there: the dialog procedure of all maps, and the
// dialog that asks before a file is replaced. To be called once a process, before a rollup is
// opened.
void AttachPanel();

}  // namespace ui
