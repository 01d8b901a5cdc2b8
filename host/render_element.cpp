#include "host/render_element.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <hold.h>
#include <notify.h>
#include <vrayframebuffer.h>

#include "host/application.h"
#include "host/edit_undo.h"
#include "host/param_block.h"

namespace host {

bool IsVRayElement(const Class_ID& id) {
    return id == VRAY_OPTIONS_ELEMENT ||
           std::any_of(std::begin(VRAY_ELEMENT_CLASSES), std::end(VRAY_ELEMENT_CLASSES),
                       [&](const VRayElementClass& known) { return known.id == id; });
}

namespace {

// Whoever implements nodes himself has no scene that they could leave.
bool IsInScene(INode& node) {
    const auto* inScene = dynamic_cast<Node*>(&node);
    return !inScene || inScene->IsInScene();
}

}  // namespace

class RenderElement::MultiMatte final : public IMultiMatte {
  public:
    void Set(int component, const MultiMatteComponent& description) {
        Component& kept = components_.at(static_cast<std::size_t>(component));
        kept.description = description;
        kept.nodes.clear();
        for (int index = 0; index < description.nodes.Count(); ++index) {
            kept.nodes.push_back(std::make_unique<TargetReference>(description.nodes[index]));
        }
    }

    void GetComponent(int component, MultiMatteComponent& description) override {
        description = {};
        if (component < 0 || static_cast<std::size_t>(component) >= components_.size()) {
            return;
        }
        const Component& kept = components_[static_cast<std::size_t>(component)];
        description = kept.description;
        description.nodes.SetCount(0);
        for (const auto& reference : kept.nodes) {
            auto* node = static_cast<INode*>(reference->Get());
            if (node && IsInScene(*node)) description.nodes.Append(1, &node);
        }
    }

  private:
    struct Component {
        // Without its nodes.
        MultiMatteComponent description;
        std::vector<std::unique_ptr<TargetReference>> nodes;
    };
    std::array<Component, 3> components_;
};

RenderElement::RenderElement(Class_ID id, const MSTR& name) : id_(id), name_(name) {
    SetParameters(ParametersOfNew(id));
}

std::map<ParamID, int> RenderElement::ParametersOfNew(Class_ID id) {
    std::map<ParamID, int> parameters;
    if (IsVRayElement(id)) parameters[VRAY_ELEMENT_ENABLED] = TRUE;
    if (id == VRAY_DENOISER_ELEMENT) parameters[VRAY_DENOISER_MODE] = 2;
    return parameters;
}

RenderElement::~RenderElement() {
    DeleteAllRefsFromMe();
}

void* RenderElement::GetInterface(ULONG id) {
    if (id == VRAY_RENDER_ELEMENT_INTERFACE && (IsVRayElement(id_) || inVRayFrameBuffer_)) {
        return static_cast<IRenderElement*>(this);
    }
    return id == MULTI_MATTE_INTERFACE ? static_cast<IMultiMatte*>(multiMatte_.get()) : nullptr;
}

RefTargetHandle RenderElement::GetReference(int which) {
    return which == 0 ? block_ : nullptr;
}

void RenderElement::SetReference(int /*which*/, RefTargetHandle target) {
    block_ = dynamic_cast<IParamBlock2*>(target);
}

void RenderElement::Rename(const MSTR& name) {
    PutFieldUndo(*this, &RenderElement::name_, &RenderElement::Rename);
    name_ = name;
    Changed();
}

void RenderElement::SetElementName(const MCHAR* name) {
    Rename(MSTR(name));
}

void RenderElement::SetEnabled(bool on) {
    PutFieldUndo(*this, &RenderElement::enabled_, &RenderElement::SetEnabled);
    enabled_ = on;
    Changed();
}

void RenderElement::Changed() {
    NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    if (manager_ && manager_->IsOpen()) Broadcast(NOTIFY_RENDPARAM_CHANGED);
}

void RenderElement::GetPBBitmap(PBBitmap*& bitmap) const {
    bitmap = picture_.get();
}

void RenderElement::SetBitmap(Owned<Bitmap> bitmap) {
    picture_ = bitmap ? std::make_unique<PBBitmap>() : nullptr;
    if (picture_) {
        picture_->bm = bitmap.get();
    }
    bitmap_ = std::move(bitmap);
}

std::map<ParamID, int> RenderElement::Parameters() const {
    std::map<ParamID, int> parameters;
    for (int index = 0; block_ && index < blockDesc_->Count(); ++index) {
        const ParamID id = blockDesc_->GetParamDefByIndex(index).ID;
        parameters[id] = block_->GetInt(id);
    }
    return parameters;
}

// The old block goes before the descriptor that it looks at.
void RenderElement::SetParameters(const std::map<ParamID, int>& parameters) {
    DeleteReference(0);
    blockDesc_.reset();
    if (parameters.empty()) {
        return;
    }
    blockDesc_ =
        std::make_unique<ParamBlockDesc2>(BlockID{0}, _M("parameters"), 0, nullptr, 0, p_end);
    for (const auto& [id, value] : parameters) {
        blockDesc_->AddParam(id, _M(""), TYPE_INT, 0, 0, p_default, value, p_end);
    }
    ReplaceReference(0, new ParamBlock(*blockDesc_, this));
}

void RenderElement::SetParameter(ParamID id, int value) {
    if (block_ && blockDesc_->IDtoIndex(id) >= 0) {
        block_->SetValue(id, 0, value);
        return;
    }
    std::map<ParamID, int> parameters = Parameters();
    parameters[id] = value;
    SetParameters(parameters);
}

void RenderElement::RemoveParameter(ParamID id) {
    std::map<ParamID, int> parameters = Parameters();
    if (parameters.erase(id) > 0) {
        SetParameters(parameters);
    }
}

void RenderElement::SetMultiMatte(int component, const MultiMatteComponent& description) {
    if (!multiMatte_) {
        multiMatte_ = std::make_unique<MultiMatte>();
    }
    multiMatte_->Set(component, description);
}

// The manager

// The manager is the running application's when undo steps have this.
class ElementPresence final : public Presence {
  public:
    ElementPresence(RenderElementManager& manager, RenderElement& element)
        : manager_(manager), element_(&element) {}

    ReferenceTarget* Target() const override { return element_.Get(); }
    void Leave() override {
        const auto found = manager_.PlaceOf(static_cast<RenderElement*>(element_.Get()));
        if (owned_ || found == manager_.elements_.end()) return;
        place_ = found - manager_.elements_.begin();
        owned_ = std::move(*found);
        manager_.elements_.erase(found);
        owned_->manager_ = nullptr;
    }
    void Left() override {
        if (owned_) manager_.TellChanged(*owned_);
    }
    void Enter() override {
        if (!owned_) return;
        auto& elements = manager_.elements_;
        RenderElement& element = *owned_;
        const auto place = std::min(place_, static_cast<std::ptrdiff_t>(elements.size()));
        elements.insert(elements.begin() + place, std::move(owned_));
        element.manager_ = &manager_;
        manager_.TellChanged(element);
    }

  private:
    RenderElementManager& manager_;
    Owned<RenderElement> owned_;
    TargetReference element_;
    std::ptrdiff_t place_ = 0;
};

bool RenderElementManager::IsOpen() const {
    const auto& open = App().elements;
    return std::any_of(open.begin(), open.end(),
                       [this](const auto& each) { return &each == this; });
}

void RenderElementManager::TellChanged(RenderElement& element) const {
    element.NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
    if (IsOpen()) Broadcast(NOTIFY_RENDPARAM_CHANGED);
}

RenderElementManager::Elements::iterator RenderElementManager::PlaceOf(
    const RenderElement* element) {
    return std::find_if(elements_.begin(), elements_.end(),
                        [element](const auto& other) { return element && other.get() == element; });
}

RenderElement* RenderElementManager::GetRenderElement(int index) {
    return index >= 0 && index < NumRenderElements()
               ? elements_[static_cast<std::size_t>(index)].get()
               : nullptr;
}

RenderElement& RenderElementManager::Add(Class_ID id, const MSTR& name) {
    elements_.push_back(Owned<RenderElement>(new RenderElement(id, name)));
    RenderElement& element = *elements_.back();
    element.manager_ = this;
    if (theHold.Holding() && IsOpen()) PutComing(std::make_shared<ElementPresence>(*this, element));
    TellChanged(element);
    return element;
}

RenderElement* RenderElementManager::Find(const MSTR& name) const {
    const auto found = std::find_if(elements_.begin(), elements_.end(), [&](const auto& element) {
        return MSTR(element->ElementName()) == name;
    });
    return found == elements_.end() ? nullptr : found->get();
}

bool RenderElementManager::Remove(const RenderElement* element) {
    const auto found = PlaceOf(element);
    if (found == elements_.end()) {
        return false;
    }
    Go(std::make_shared<ElementPresence>(*this, **found), IsOpen());
    return true;
}

std::vector<Owned<RenderElement>> RenderElementManager::TakeAll() {
    for (const auto& element : elements_)
        element->manager_ = nullptr;
    return std::exchange(elements_, {});
}

void RenderElementManager::PutBack(std::vector<Owned<RenderElement>> elements) {
    elements_ = std::move(elements);
    for (const auto& element : elements_)
        element->manager_ = this;
}

void RenderElementManager::Clear() {
    const bool any = !elements_.empty();
    TakeAll();
    if (any && IsOpen()) Broadcast(NOTIFY_RENDPARAM_CHANGED);
}

}  // namespace host
