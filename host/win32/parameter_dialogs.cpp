// ClassDesc2's part in windows: the rollups in which the host shows an effect's parameters.
#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <iparamb2.h>
#include <sfx.h>

#include "host/application.h"
#include "host/target_reference.h"
#include "host/win32/parameter_map.h"

namespace host {
namespace {

// The block of that descriptor; null when the object has none.
IParamBlock2* BlockOf(ReferenceTarget& object, const ParamBlockDesc2& desc) {
    for (int number = 0; number < object.NumParamBlocks(); ++number) {
        IParamBlock2* block = object.GetParamBlock(number);
        if (block && block->GetDesc() == &desc) return block;
    }
    return nullptr;
}

// Which rollups the user left open and which closed, for as long as the process lives.
std::map<std::pair<const ParamBlockDesc2*, MapID>, bool> rolloutStates;

class ParameterDialogs final : public SFXParamDlg {
  public:
    ParameterDialogs(ClassDesc2& desc, IRendParams& place, SpecialFX& effect);

    Class_ID ClassID() override { return desc_.ClassID(); }
    // Null when the effect is destroyed.
    ReferenceTarget* GetThing() override { return effect_.Get(); }
    void SetThing(ReferenceTarget* effect) override;
    void DeleteThis() override { delete this; }

    const ClassDesc2& Desc() const { return desc_; }
    void RestoreRolloutState();
    ParameterMap* Find(const ParamBlockDesc2* desc, MapID map) const;
    void Invalidate(const ParamBlockDesc2& desc, ParamID id, int tabIndex);

  private:
    struct Shown {
        const ParamBlockDesc2* desc;
        std::unique_ptr<ParameterMap> map;
    };

    ~ParameterDialogs() override;
    void Add(IParamBlock2& block, IRendParams& place);
    // Once to each procedure, however many maps it is of.
    static void TellThing(const std::vector<ParamMap2UserDlgProc*>& procedures,
                          ReferenceTarget* effect);

    ClassDesc2& desc_;
    TargetReference effect_;
    std::vector<Shown> shown_;
};

// The latest last.
std::vector<ParameterDialogs*> openDialogs;

void ShowAnew(ParamBlockDesc2& desc, ParamID id, int tabIndex) {
    for (ParameterDialogs* dialogs : openDialogs)
        dialogs->Invalidate(desc, id, tabIndex);
}

ParameterDialogs::ParameterDialogs(ClassDesc2& desc, IRendParams& place, SpecialFX& effect)
    : desc_(desc), effect_(&effect) {
    openDialogs.push_back(this);
    App().invalidateUI = ShowAnew;
    std::vector<IParamBlock2*> blocks;
    std::vector<ParamMap2UserDlgProc*> procedures;
    for (int number = 0; number < effect.NumParamBlocks(); ++number) {
        IParamBlock2* block = effect.GetParamBlock(number);
        const ParamBlockDesc2* blockDesc = block ? block->GetDesc() : nullptr;
        if (!blockDesc || blockDesc->cd != &desc || !(blockDesc->flags & P_AUTO_UI)) continue;
        blocks.push_back(block);
        for (const auto& spec : blockDesc->map_specs)
            procedures.push_back(spec.dlgProc);
    }
    // They know the effect when their first dialog opens.
    TellThing(procedures, &effect);
    for (IParamBlock2* block : blocks)
        Add(*block, place);
}

void ParameterDialogs::Add(IParamBlock2& block, IRendParams& place) {
    const ParamBlockDesc2* desc = block.GetDesc();
    for (const auto& spec : desc->map_specs) {
        shown_.push_back({desc, std::make_unique<ParameterMap>(block, spec, place)});
        shown_.back().map->Open();
    }
}

ParameterDialogs::~ParameterDialogs() {
    for (const Shown& shown : shown_)
        shown.map->GiveText();
    for (const auto& [desc, map] : shown_)
        rolloutStates[{desc, map->GetMapID()}] = map->IsOpen();
    // Those below needn't move.
    while (!shown_.empty())
        shown_.pop_back();
    std::erase(openDialogs, this);
    if (openDialogs.empty()) App().invalidateUI = nullptr;
}

void ParameterDialogs::TellThing(const std::vector<ParamMap2UserDlgProc*>& procedures,
                                 ReferenceTarget* effect) {
    std::vector<ParamMap2UserDlgProc*> told{nullptr};
    for (ParamMap2UserDlgProc* procedure : procedures) {
        if (std::find(told.begin(), told.end(), procedure) != told.end()) continue;
        told.push_back(procedure);
        procedure->SetThing(effect);
    }
}

void ParameterDialogs::SetThing(ReferenceTarget* effect) {
    if (!effect || effect->ClassID() != desc_.ClassID() || effect == GetThing()) return;
    // What is being typed was meant for the former one.
    for (const Shown& shown : shown_)
        shown.map->GiveText();
    effect_.ReplaceReference(0, effect);
    std::vector<ParamMap2UserDlgProc*> procedures;
    for (const auto& [desc, map] : shown_) {
        map->SetParamBlock(BlockOf(*effect, *desc));
        procedures.push_back(map->Procedure());
    }
    TellThing(procedures, effect);
}

void ParameterDialogs::RestoreRolloutState() {
    for (const auto& [desc, map] : shown_) {
        const auto state = rolloutStates.find({desc, map->GetMapID()});
        if (state != rolloutStates.end()) map->SetOpen(state->second);
    }
}

ParameterMap* ParameterDialogs::Find(const ParamBlockDesc2* desc, MapID map) const {
    for (const Shown& shown : shown_) {
        const bool fits = shown.desc == desc && shown.map->GetMapID() == map;
        if (fits && shown.map->GetHWnd()) return shown.map.get();
    }
    return nullptr;
}

void ParameterDialogs::Invalidate(const ParamBlockDesc2& desc, ParamID id, int tabIndex) {
    for (const Shown& shown : shown_) {
        if (shown.desc == &desc) shown.map->Invalidate(id, tabIndex);
    }
}

}  // namespace
}  // namespace host

SFXParamDlg* ClassDesc2::CreateParamDialogs(IRendParams* ip, SpecialFX* effect) {
    if (!ip || !effect) return nullptr;
    // Its own DeleteThis ends it.
    return new host::ParameterDialogs(*this, *ip, *effect);
}

void ClassDesc2::RestoreRolloutState() {
    for (host::ParameterDialogs* dialogs : host::openDialogs) {
        if (&dialogs->Desc() == this) dialogs->RestoreRolloutState();
    }
}

IParamMap2* ClassDesc2::GetParamMap(const ParamBlockDesc2* desc, MapID map) const {
    for (auto dialogs = host::openDialogs.rbegin(); dialogs != host::openDialogs.rend();
         ++dialogs) {
        if (&(*dialogs)->Desc() != this) continue;
        if (IParamMap2* found = (*dialogs)->Find(desc, map)) return found;
    }
    return nullptr;
}
