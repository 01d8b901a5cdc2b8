#include "ui/win32/panel_pictures.h"

#include <utility>

#include "plugin/library.h"
#include "ui/resource.h"

namespace ui {
namespace {

HBITMAP outputKinds = nullptr;
HIMAGELIST checks = nullptr;

// With its alpha, unlike what LoadBitmap gives.
HBITMAP LoadPicture(int id) {
    return static_cast<HBITMAP>(LoadImageW(plugin::Module(), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0,
                                           0, LR_CREATEDIBSECTION));
}

HIMAGELIST MakeCheckPictures() {
    constexpr int size = 16;
    constexpr int room = 5;
    HIMAGELIST pictures = ImageList_Create(size, size, ILC_COLOR32, 0, room);
    HBITMAP all = LoadPicture(IDB_CHECKS);
    HBITMAP off = LoadPicture(IDB_CHECK_OFF);
    if (pictures && all) ImageList_Add(pictures, all, nullptr);
    if (pictures && off) ImageList_Replace(pictures, 0, off, nullptr);
    if (all) DeleteObject(all);
    if (off) DeleteObject(off);
    return pictures;
}

}  // namespace

HBITMAP OutputKindPictures() {
    if (!outputKinds) outputKinds = LoadPicture(IDB_OUTPUT_KINDS);
    return outputKinds;
}

void DropOutputKindPictures() {
    if (HBITMAP dropped = std::exchange(outputKinds, nullptr)) DeleteObject(dropped);
}

HIMAGELIST CheckPictures() {
    if (!checks) checks = MakeCheckPictures();
    return checks;
}

void DropCheckPictures() {
    if (HIMAGELIST dropped = std::exchange(checks, nullptr)) ImageList_Destroy(dropped);
}

}  // namespace ui
