// Sees the effect's marked parameters on their way in and out of the block.
#pragma once

#include <iparamb2.h>
#include <strclass.h>

namespace effect {
class PSDOutput;
}

namespace plugin {

// filename: made absolute; the empty text becomes a path by default.
// usePS7Extensions, legacyBitDepth: answered from the present.
// nodeIDList, mtlIDList: long ones become all that the open panel shows of them.
// bitDepth: at 32 the layers' blend modes are replaced that 32-bit documents don't have.
// The tables of layers: an entry goes when its layer is deleted, all but the first. The open panel
// shows what became of them.
class PSDOutputPBAccessor : public PBAccessor {
  public:
    void Get(PB2Value& v, ReferenceMaker* owner, ParamID id, int tabIndex, TimeValue t,
             Interval& valid) override;
    void Set(PB2Value& v, ReferenceMaker* owner, ParamID id, int tabIndex, TimeValue t) override;
    void TabChanged(tab_changes changeCode, Tab<PB2Value>* tab, ReferenceMaker* owner, ParamID id,
                    int tabIndex, int count) override;
};

// The one instance.
PSDOutputPBAccessor& EffectAccessor();

// What `filename` becomes when it is set to `given`: absolute, or a path by default for the empty
// text. File dialogs for it start there from now on; the effect's short form of the name goes.
MSTR NormalizeFilename(effect::PSDOutput& effect, const MSTR& given);

// The depth of an old scene, as its legacyBitDepth has it and not as the accessor answers it: 8 or
// 16. The block is an effect's.
int StoredBitDepth(IParamBlock2& pblock);

}  // namespace plugin
