// An effect with a parameter for each kind of control, in the two rollups of sample_rollups.rc.
#pragma once

#include <iparamm2.h>
#include <sfx.h>

#include <functional>
#include <string>
#include <vector>

#include "host/application.h"
#include "tests/host/sample_block.h"
#include "tests/host/win32/sample_rollups_ids.h"

enum PanelParameter : ParamID {
    PANEL_ON,
    PANEL_FOLDER,
    PANEL_DEPTH,
    PANEL_NUMBER,
    PANEL_TEXT,
    PANEL_COMBO,
    PANEL_MISSING,
    PANEL_NODES,
    PANEL_LIVE_TEXT,
    PANEL_OTHER,
    PANEL_UNSEEN,
};

constexpr MapID mainMap = 4;
constexpr MapID moreMap = 9;

struct PanelMessage {
    MapID map;
    UINT message;
    WPARAM wParam;
};

// Keeps what it gets, and answers what it is told to.
class PanelProcedure final : public ParamMap2UserDlgProc {
  public:
    INT_PTR DlgProc(TimeValue t, IParamMap2* map, HWND hWnd, UINT message, WPARAM wParam,
                    LPARAM lParam) override {
        time = t;
        messages.push_back({map->GetMapID(), message, wParam});
        return answer ? answer(map, hWnd, message, wParam, lParam) : FALSE;
    }
    void DeleteThis() override { ++deletions; }
    void SetThing(ReferenceTarget* thing) override { things.push_back(thing); }

    int Count(MapID map, UINT message) const {
        int count = 0;
        for (const PanelMessage& got : messages)
            count += got.map == map && got.message == message;
        return count;
    }

    std::function<INT_PTR(IParamMap2*, HWND, UINT, WPARAM, LPARAM)> answer;
    std::vector<PanelMessage> messages;
    std::vector<ReferenceTarget*> things;
    TimeValue time = -1;
    int deletions = 0;
};

class PanelClassDesc : public ClassDesc2 {
  public:
    PanelClassDesc()
        : block(0, _M("params"), 0, this, P_AUTO_CONSTRUCT | P_AUTO_UI | P_MULTIMAP, 0, 2,
                int{mainMap}, SAMPLE_ROLLUP_MAIN, SAMPLE_TEXT_MAIN, 0, 0, &procedure,  //
                int{moreMap}, SAMPLE_ROLLUP_MORE, SAMPLE_TEXT_MORE, 0, 1, &procedure, p_end) {
        block.AddParam(PANEL_ON, _M("on"), TYPE_BOOL, 0, 0, p_default, TRUE, p_ui, int{mainMap},
                       TYPE_SINGLECHEKBOX, SAMPLE_ID_ON, p_enable_ctrls, 4, PANEL_NUMBER,
                       PANEL_TEXT, PANEL_OTHER, 99, p_end);
        block.AddParam(PANEL_FOLDER, _M("folder"), TYPE_BOOL, 0, 0, p_ui, int{mainMap},
                       TYPE_CHECKBUTTON, SAMPLE_ID_FOLDER, p_end);
        block.AddParam(PANEL_DEPTH, _M("depth"), TYPE_INT, 0, 0, p_default, 16, p_ui, int{mainMap},
                       TYPE_RADIO, 3, SAMPLE_ID_8_BITS, SAMPLE_ID_16_BITS, SAMPLE_ID_32_BITS,
                       p_vals, 8, 16, 32, p_end);
        block.AddParam(PANEL_NUMBER, _M("number"), TYPE_FLOAT, 0, 0, p_default, 72.0, p_range, 1.0,
                       10000.0, p_accessor, &accessor, p_ui, int{mainMap}, TYPE_SPINNER,
                       EDITTYPE_POS_FLOAT, SAMPLE_ID_NUMBER, SAMPLE_ID_ARROWS, 1.0, p_end);
        block.AddParam(PANEL_TEXT, _M("text"), TYPE_STRING, 0, 0, p_default, _M("text"), p_accessor,
                       &accessor, p_ui, int{mainMap}, TYPE_EDITBOX, SAMPLE_ID_TEXT, p_end);
        block.AddParam(PANEL_COMBO, _M("combo"), TYPE_INT, 0, 0, p_default, 5, p_ui, int{mainMap},
                       TYPE_INT_COMBOBOX, SAMPLE_ID_COMBO, 3, SAMPLE_TEXT_CHANNELS,
                       SAMPLE_TEXT_LAYERS, SAMPLE_TEXT_MATTES, p_vals, 0, 5, 1, p_end);
        block.AddParam(PANEL_MISSING, _M("missing"), TYPE_BOOL, 0, 0, p_ui, int{mainMap},
                       TYPE_SINGLECHEKBOX, SAMPLE_ID_MISSING, p_end);
        block.AddParam(PANEL_NODES, _M("nodes"), TYPE_INODE_TAB, 0, P_VARIABLE_SIZE, 0, p_ui,
                       int{moreMap}, TYPE_NODELISTBOX, SAMPLE_ID_NODES, 0, 0, 0, p_end);
        block.AddParam(PANEL_LIVE_TEXT, _M("liveText"), TYPE_STRING, 0, 0, p_ui, int{moreMap},
                       TYPE_EDITBOX, SAMPLE_ID_LIVE_TEXT, p_end);
        block.AddParam(PANEL_OTHER, _M("other"), TYPE_BOOL, 0, 0, p_ui, int{moreMap},
                       TYPE_SINGLECHEKBOX, SAMPLE_ID_OTHER, p_end);
        block.AddParam(PANEL_UNSEEN, _M("unseen"), TYPE_BOOL, 0, 0, p_end);
    }

    int IsPublic() override { return 1; }
    void* Create(BOOL) override { return nullptr; }
    const MCHAR* ClassName() override { return _M("Panel"); }
    SClass_ID SuperClassID() override { return RENDER_EFFECT_CLASS_ID; }
    Class_ID ClassID() override { return {31, 32}; }
    const MCHAR* Category() override { return _M(""); }
    HINSTANCE HInstance() override { return GetModuleHandleW(nullptr); }

    PanelProcedure procedure;
    SampleAccessor accessor;
    ParamBlockDesc2 block;
};

class PanelEffect : public Effect {
  public:
    explicit PanelEffect(ClassDesc2& desc) { desc.MakeAutoParamBlocks(this); }

    Class_ID ClassID() override { return {31, 32}; }
    int NumParamBlocks() override { return 1; }
    IParamBlock2* GetParamBlock(int number) override { return number == 0 ? block : nullptr; }
    int NumRefs() override { return 1; }
    RefTargetHandle GetReference(int) override { return block; }
    RefResult NotifyRefChanged(const Interval&, RefTargetHandle, PartID&, RefMessage,
                               BOOL) override {
        if (onChange) onChange();
        return REF_SUCCEED;
    }
    void Apply(TimeValue, Bitmap*, RenderGlobalContext*, CheckAbortCallback*) override {}

    IParamBlock2* block = nullptr;
    std::function<void()> onChange;

  protected:
    ~PanelEffect() override { DeleteAllRefsFromMe(); }

  private:
    void SetReference(int, RefTargetHandle target) override {
        block = static_cast<IParamBlock2*>(target);
    }
};
