// Descriptors of parameter blocks: read from their argument lists, and turned into blocks.
#include <cassert>
#include <cstdarg>

#include <iparamb2.h>

#include "host/application.h"
#include "host/param_block.h"

namespace {

ParamType2 EntryType(ParamType2 type) {
    return static_cast<ParamType2>(type & ~TYPE_TAB);
}

// Takes the argument that a value of the type is passed as; text goes to `text`.
void TakeValue(ParamType2 type, std::va_list* arguments, PB2Value& value, MSTR& text) {
    switch (EntryType(type)) {
        case TYPE_FLOAT:
        case TYPE_PCNT_FRAC:
            value.f = static_cast<float>(va_arg(*arguments, double));
            break;
        case TYPE_STRING:
        case TYPE_FILENAME:
            text = va_arg(*arguments, const MCHAR*);
            break;
        case TYPE_INODE:
        case TYPE_REFTARG:
            assert(false && "a reference has neither a default nor a range");
            break;
        default:
            value.i = va_arg(*arguments, int);
            break;
    }
}

template <class Number>
std::vector<Number> TakeNumbers(int count, std::va_list* arguments) {
    std::vector<Number> numbers;
    numbers.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        numbers.push_back(static_cast<Number>(va_arg(*arguments, int)));
    return numbers;
}

void TakeValues(ParamControl& control, std::size_t count, std::va_list* arguments) {
    [[maybe_unused]] const int tag = va_arg(*arguments, int);
    assert(tag == p_vals);
    control.values = TakeNumbers<int>(static_cast<int>(count), arguments);
}

ParamControl TakeControl(std::va_list* arguments) {
    ParamControl control;
    control.map = static_cast<MapID>(va_arg(*arguments, int));
    control.type = static_cast<ControlType2>(va_arg(*arguments, int));
    switch (control.type) {
        case TYPE_SINGLECHEKBOX:
        case TYPE_CHECKBUTTON:
        case TYPE_EDITBOX:
            control.ids = TakeNumbers<int>(1, arguments);
            break;
        case TYPE_NODELISTBOX:
            control.ids = TakeNumbers<int>(4, arguments);
            break;
        case TYPE_SPINNER:
            va_arg(*arguments, int);  // EDITTYPE_POS_FLOAT, the only kind
            control.ids = TakeNumbers<int>(2, arguments);
            control.step = static_cast<float>(va_arg(*arguments, double));
            break;
        case TYPE_RADIO:
            control.ids = TakeNumbers<int>(va_arg(*arguments, int), arguments);
            TakeValues(control, control.ids.size(), arguments);
            break;
        case TYPE_INT_COMBOBOX:
            control.ids = TakeNumbers<int>(1, arguments);
            control.texts = TakeNumbers<StringResID>(va_arg(*arguments, int), arguments);
            TakeValues(control, control.texts.size(), arguments);
            break;
    }
    return control;
}

void TakeOption(ParamDef& def, int tag, std::va_list* arguments) {
    MSTR noText;
    switch (tag) {
        case p_default:
            TakeValue(def.type, arguments, def.def, def.def_text);
            break;
        case p_range:
            def.has_range = true;
            TakeValue(def.type, arguments, def.range_low, noText);
            TakeValue(def.type, arguments, def.range_high, noText);
            break;
        case p_accessor:
            def.accessor = va_arg(*arguments, PBAccessor*);
            break;
        case p_assetTypeID:
            def.assetTypeID = va_arg(*arguments, int);
            break;
        case p_refno:
            def.refno = va_arg(*arguments, int);
            break;
        case p_ui:
            def.control = TakeControl(arguments);
            break;
        case p_enable_ctrls:
            def.enables = TakeNumbers<ParamID>(va_arg(*arguments, int), arguments);
            break;
        default:
            assert(false && "unknown tag in a parameter's definition");
            break;
    }
}

}  // namespace

ParamBlockDesc2::ParamBlockDesc2(BlockID id, const MCHAR* internalName, StringResID /*local_name*/,
                                 ClassDesc2* classDesc, int blockFlags, ...)
    : ID(id), int_name(internalName), cd(classDesc), flags(static_cast<USHORT>(blockFlags)) {
    std::va_list arguments;
    va_start(arguments, blockFlags);
    if (flags & P_VERSION) {
        version_ = static_cast<DWORD>(va_arg(arguments, int));
    }
    if (flags & P_AUTO_CONSTRUCT) {
        ref_no = va_arg(arguments, int);
    }
    if ((flags & P_AUTO_UI) && (flags & P_MULTIMAP)) {
        const int count = va_arg(arguments, int);
        for (int map = 0; map < count; ++map) {
            map_spec spec;
            spec.map_id = static_cast<MapID>(va_arg(arguments, int));
            spec.dlg_template = va_arg(arguments, int);
            spec.title = va_arg(arguments, int);
            spec.test_flags = va_arg(arguments, int);
            spec.rollup_flags = va_arg(arguments, int);
            spec.dlgProc = va_arg(arguments, ParamMap2UserDlgProc*);
            map_specs.push_back(spec);
        }
    }
    [[maybe_unused]] const int end = va_arg(arguments, int);
    assert(end == p_end);
    va_end(arguments);
    if (cd) {
        cd->AddParamBlockDesc(this);
    }
}

void ParamBlockDesc2::AddParam(int id, ...) {
    assert(IDtoIndex(id) < 0);
    ParamDef def;
    def.ID = static_cast<ParamID>(id);
    std::va_list arguments;
    va_start(arguments, id);
    def.int_name = va_arg(arguments, const MCHAR*);
    def.type = static_cast<ParamType2>(va_arg(arguments, int));
    if (def.type & TYPE_TAB) {
        def.tab_size = va_arg(arguments, int);
    }
    def.flags = va_arg(arguments, int);
    va_arg(arguments, int);  // the local name, which only the user sees
    for (int tag = va_arg(arguments, int); tag != p_end; tag = va_arg(arguments, int)) {
        TakeOption(def, tag, &arguments);
    }
    va_end(arguments);
    paramdefs_.push_back(def);
}

void ParamBlockDesc2::ParamOption(int id, int option_tag, ...) {
    const int index = IDtoIndex(id);
    assert(index >= 0);
    std::va_list arguments;
    va_start(arguments, option_tag);
    TakeOption(paramdefs_[static_cast<std::size_t>(index)], option_tag, &arguments);
    va_end(arguments);
}

int ParamBlockDesc2::IDtoIndex(int id) const {
    for (std::size_t index = 0; index < paramdefs_.size(); ++index) {
        if (paramdefs_[index].ID == id) {
            return static_cast<int>(index);
        }
    }
    return -1;
}

ParamMap2UserDlgProc* ParamBlockDesc2::GetUserDlgProc(MapID map) const {
    for (const map_spec& spec : map_specs) {
        if (spec.map_id == map) return spec.dlgProc;
    }
    return nullptr;
}

bool ParamBlockDesc2::SetUserDlgProc(MapID map, ParamMap2UserDlgProc* procedure) {
    for (map_spec& spec : map_specs) {
        if (spec.map_id != map) continue;
        spec.dlgProc = procedure;
        return true;
    }
    return false;
}

ParamBlockDesc2* ClassDesc2::GetParamBlockDesc(int index) const {
    return index >= 0 && index < NumParamBlockDescs()
               ? descriptors_[static_cast<std::size_t>(index)]
               : nullptr;
}

ParamBlockDesc2* ClassDesc2::GetParamBlockDescByID(BlockID id) const {
    for (ParamBlockDesc2* desc : descriptors_) {
        if (desc->ID == id) {
            return desc;
        }
    }
    return nullptr;
}

void ClassDesc2::InvalidateUI(ParamBlockDesc2* desc, ParamID id, int tabIndex) {
    const auto& show = host::App().invalidateUI;
    if (desc && show) show(*desc, id, tabIndex);
}

void ClassDesc2::MakeAutoParamBlocks(ReferenceMaker* owner) {
    for (ParamBlockDesc2* desc : descriptors_) {
        if (!(desc->flags & P_AUTO_CONSTRUCT)) {
            continue;
        }
        auto block = std::make_unique<host::ParamBlock>(*desc, owner);
        if (owner->ReplaceReference(desc->ref_no, block.get()) == REF_SUCCEED) {
            static_cast<void>(block.release());
        }
    }
}
