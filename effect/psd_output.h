// The render effect: decides whether a frame is saved, and turns a rendered frame into a layered
// document on disk.
//
// One render is RenderBegin, then for each frame the two frame notifications around the rendering
// and Apply after it, then RenderEnd. A check that fails in RenderBegin never stops the render: no
// file is made, and the host's log tells why. Everything runs on the thread on which the host
// calls.
//
// An effect keeps nothing of its own in a scene file: its block, and the AppData on scene layers,
// are all there is.
#pragma once

#include <iparamb2.h>
#include <notify.h>
#include <sfx.h>
#include <strclass.h>

#include <boost/shared_ptr.hpp>
#include <cstdint>

#include "effect/library_services.h"
#include "effect/scene_snapshot.h"
#include "psdfile/channel_source.h"

namespace effect {

constexpr Class_ID psdOutputClassID{0x70068609, 0x01d5d297};

// Title of every box and log line.
constexpr const MCHAR* messageTitle = _M("veltrane");

class PSDOutputLayer;
class SavedCorrections;
struct PSDFrameSources;

// What the library registers for all notifications. `effect` is the PSDOutput that it is for;
// nothing happens for null, and for an effect that is gone.
void OnEffectNotification(void* effect, NotifyInfo* info);

class PSDOutput : public Effect8 {
  public:
    // `classDescriptor` makes the parameter block (reference 0). Both must outlive the object.
    PSDOutput(ClassDesc2& classDescriptor, const LibraryServices& libraryServices);

    // Whether `effect` is one that was made and not yet destroyed.
    static bool IsLiving(const void* effect);

    Class_ID ClassID() override { return psdOutputClassID; }
    void GetClassName(MSTR& s) override;
    int NumParamBlocks() override { return 2; }
    IParamBlock2* GetParamBlock(int number) override;
    IParamBlock2* GetParamBlockByID(BlockID id) override;
    int NumSubs() override { return 1; }
    Animatable* SubAnim(int number) override;
    MSTR SubAnimName(int number) override;
    void EnumAuxFiles(AssetEnumCallback&, DWORD) override {}

    // The copy has its block, and so its layers' settings and its choice of scene layers. It
    // belongs to the caller.
    RefTargetHandle Clone(RemapDir& remap) override;
    IOResult Save(ISave* isave) override;
    IOResult Load(ILoad* iload) override;

    int NumRefs() override { return 2; }
    RefTargetHandle GetReference(int number) override;
    RefResult NotifyRefChanged(const Interval& changeInt, RefTargetHandle hTarget, PartID& partID,
                               RefMessage message, BOOL propagate) override;

    int RenderBegin(TimeValue t, ULONG flags) override;
    int RenderEnd(TimeValue t) override;
    DWORD GBufferChannelsRequired(TimeValue t) override;
    void Apply(TimeValue t, Bitmap* bm, RenderGlobalContext* gc, CheckAbortCallback* cb) override;
    bool SupportsBitmap(Bitmap& bitmap) override;
    SFXParamDlg* CreateParamDialog(IRendParams* ip) override;

    // The document's path for the frame at `t`, absolute; with `numbered` it has the frame's number
    // when more than one frame is rendered. False, with `name` as far as it got, when there is
    // none.
    bool ResolveOutputFileName(MSTR& name, bool numbered, TimeValue t);

    // The render elements' settings. A render goes by one of the two lists; any other number has no
    // layers.
    static constexpr int productionLayers = 0;
    static constexpr int secondaryLayers = 1;
    // The parameter that holds a list; -1 for any other number.
    static ParamID LayerList(int list);
    int LayerCount(int list) const;
    // Null for a list or index that isn't there, and for an entry whose layer was deleted or lost
    // its block.
    PSDOutputLayer* Layer(int list, int index) const;

    const LibraryServices& Services() const { return services; }

    // The parameter, of whichever effect, that the host told of last; -1 before. Handlers change
    // further parameters, so it is another one when they return.
    static inline ParamID lastChanged = -1;

    IParamBlock2* pblock = nullptr;
    // Of an effect that was made and not loaded 256, of a loaded one 0.
    int dataVersion = 256;
    // Starting point of the file dialog; the definition of `filename` points at it. Units with the
    // terminator.
    MCHAR filenameField[260] = {};
    // How the panel last showed the name, where there is little room; empty from when `filename`
    // was read or set until it is shown anew.
    MSTR shortFilename;

  protected:
    ~PSDOutput() override;
    void SetReference(int number, RefTargetHandle target) override;

  private:
    void LeaveFileDialog();

    friend void OnEffectNotification(void* effect, NotifyInfo* info);
    void BeforeRender();
    void AfterRender();
    void BeforeFrame(const RenderGlobalContext* gc);
    void AfterFrame(RenderGlobalContext* gc);
    void AfterSelectionSetChange(const NotifyInfo& info);

    // Whether the checks of RenderBegin let the render be saved. They ask and log as they go.
    bool MayBeSaved(TimeValue t);
    bool CheckVRayFrameBuffer(bool silent);
    bool CheckFilenameIsAssigned();
    void WarnOfMissingGBuffer(bool samplerWarningSilent, TimeValue t);
    bool CheckRenderOutputFilename();
    bool CheckOutputFile(TimeValue t);

    void SaveFrame(const MSTR& name, PSDFrameSources sources, SavedCorrections& corrections,
                   TimeValue t, const RenderGlobalContext& gc, CheckAbortCallback* cb);

    ClassDesc2& descriptor;
    const LibraryServices& services;
    // Of old scenes; nothing is read from it.
    IParamBlock2* secondBlock = nullptr;
    // A frame notification came: Apply is called for a frame of a render.
    bool frameActive = false;
    // All checks of RenderBegin were passed.
    bool saveArmed = false;
    // Cleared for the rest of the session in the overwrite dialog.
    bool confirmOverwrite = true;
    // The host's render-to-file switch is on only because this effect turned it on.
    bool forcedSaveFile = false;
    // The host edits a selection set, which it does by deleting it and creating it again.
    bool editingSelectionSet = false;
    // Tick at a frame's start, then the frame's duration.
    std::uint32_t renderMilliseconds = 0;
    // What the frame goes to, for a renderer that doesn't call Apply itself. Not owned.
    Bitmap* outputBitmap = nullptr;
    SceneSnapshots snapshots;
    // Solid 0 and 255 in the frame's width, shared by many layers.
    psdfile::PSDChannelImageDataSourcePtr blackSource;
    psdfile::PSDChannelImageDataSourcePtr whiteSource;
};

}  // namespace effect
