// The rollup "veltrane Parameters": file, format, depth and resolution.
#pragma once

#include <notify.h>

#include "ui/hot_zones.h"
#include "ui/win32/rollup.h"

namespace ui {

class MainRollup final : public Rollup {
  public:
    // Nothing while the rollup is closed.
    void UpdateFileNameField();
    void UpdateFormatEnabling();
    void UpdateDepthControls();
    void OfferFrameBufferChange();

    void Command(int control, int code) override;
    void Entered(int control) override;
    void Tick(UINT_PTR timer) override;

  protected:
    void Opened() override;
    void Closing() override;
    void OtherEffect() override;

  private:
    static void Hear(void* rollup, NotifyInfo* info);
    static LRESULT CALLBACK HeaderProcedure(HWND dialog, UINT message, WPARAM wParam,
                                            LPARAM lParam);
    void ListenToHeader();
    void StopListeningToHeader() const;
    LRESULT OnHeaderMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) const;
    void LoadHeader();
    void DropHeader();
    HotZone ZoneUnderMouse() const;
    void OpenZone(HotZone zone) const;
    void TakeFileName();
    bool IsNameTyped() const;

    // The one that listens to its dialog.
    static inline const MainRollup* listening = nullptr;

    HBITMAP headerBitmap = nullptr;
    // The dialog's own, which hears what isn't the header's.
    WNDPROC dialogProcedure = nullptr;
    bool fileNameDirty = false;
    // The question about the frame buffer waits for the end of an undo.
    bool offerWaits = false;
};

}  // namespace ui
