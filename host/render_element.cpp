#include "host/render_element.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <vrayframebuffer.h>

#include "host/param_block.h"

namespace host {

bool IsVRayElement(const Class_ID& id) {
    return id == VRAY_OPTIONS_ELEMENT ||
           std::any_of(std::begin(VRAY_ELEMENT_CLASSES), std::end(VRAY_ELEMENT_CLASSES),
                       [&](const VRayElementClass& known) { return known.id == id; });
}

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
            if (auto* node = static_cast<INode*>(reference->Get())) {
                description.nodes.Append(1, &node);
            }
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
    if (!IsVRayElement(id)) {
        return;
    }
    std::map<ParamID, int> parameters{{VRAY_ELEMENT_ENABLED, TRUE}};
    if (id == VRAY_DENOISER_ELEMENT) {
        parameters[VRAY_DENOISER_MODE] = 2;
    }
    MakeBlock(parameters);
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

void RenderElement::SetElementName(const MCHAR* name) {
    name_ = MSTR(name);
    NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
}

void RenderElement::SetEnabled(bool on) {
    enabled_ = on;
    NotifyDependents(FOREVER, PART_ALL, REFMSG_CHANGE);
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
void RenderElement::MakeBlock(const std::map<ParamID, int>& parameters) {
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
    MakeBlock(parameters);
}

void RenderElement::RemoveParameter(ParamID id) {
    std::map<ParamID, int> parameters = Parameters();
    if (parameters.erase(id) > 0) {
        MakeBlock(parameters);
    }
}

void RenderElement::SetMultiMatte(int component, const MultiMatteComponent& description) {
    if (!multiMatte_) {
        multiMatte_ = std::make_unique<MultiMatte>();
    }
    multiMatte_->Set(component, description);
}

// The manager

RenderElement* RenderElementManager::GetRenderElement(int index) {
    return index >= 0 && index < NumRenderElements()
               ? elements_[static_cast<std::size_t>(index)].get()
               : nullptr;
}

RenderElement& RenderElementManager::Add(Class_ID id, const MSTR& name) {
    elements_.push_back(Owned<RenderElement>(new RenderElement(id, name)));
    return *elements_.back();
}

RenderElement* RenderElementManager::Find(const MSTR& name) const {
    const auto found = std::find_if(elements_.begin(), elements_.end(), [&](const auto& element) {
        return MSTR(element->ElementName()) == name;
    });
    return found == elements_.end() ? nullptr : found->get();
}

// Out of the list first: those who are told then find it gone.
bool RenderElementManager::Remove(const RenderElement* element) {
    const auto found = std::find_if(elements_.begin(), elements_.end(),
                                    [&](const auto& other) { return other.get() == element; });
    if (found == elements_.end()) {
        return false;
    }
    const Owned<RenderElement> removed = std::move(*found);
    elements_.erase(found);
    return true;
}

void RenderElementManager::Clear() {
    while (!elements_.empty()) {
        Remove(elements_.back().get());
    }
}

}  // namespace host
