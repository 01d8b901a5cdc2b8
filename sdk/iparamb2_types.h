// Types of parameters, and the tags by which a descriptor is built.
#pragma once

#include "ref.h"

using ParamID = short;
using MapID = short;
using StringResID = int;

enum ParamType2 : int {
    TYPE_FLOAT = 0,
    TYPE_INT = 1,
    TYPE_BOOL = 4,
    TYPE_PCNT_FRAC = 5,
    TYPE_STRING = 7,
    TYPE_FILENAME = 8,
    TYPE_INODE = 14,
    TYPE_REFTARG = 16,
    TYPE_VOID = 21,
    TYPE_TAB = 0x0800,
    TYPE_STRING_TAB = TYPE_STRING + TYPE_TAB,
    TYPE_INODE_TAB = TYPE_INODE + TYPE_TAB,
    TYPE_REFTARG_TAB = TYPE_REFTARG + TYPE_TAB,
};

// Flags of a block.
constexpr USHORT P_AUTO_CONSTRUCT = 0x0002;
constexpr USHORT P_AUTO_UI = 0x0004;
constexpr USHORT P_MULTIMAP = 0x0020;
constexpr USHORT P_VERSION = 0x0040;

// Flags of a parameter.
constexpr int P_VARIABLE_SIZE = 0x0002;
constexpr int P_OWNERS_REF = 0x0008;

// Kinds of controls, with what p_ui takes after each.
enum ControlType2 : int {
    TYPE_SINGLECHEKBOX = 0,  // control
    TYPE_CHECKBUTTON = 1,    // control
    TYPE_RADIO = 2,          // count, so many controls, p_vals, a value each
    TYPE_SPINNER = 3,        // EditSpinnerType, edit field, arrows, double step
    TYPE_EDITBOX = 4,        // control
    TYPE_NODELISTBOX = 5,    // list, buttons to add, replace and delete (0 for none)
    TYPE_INT_COMBOBOX = 6,   // control, count, so many string ids, p_vals, a value each
};

enum EditSpinnerType : int {
    EDITTYPE_POS_FLOAT = 4,
};

// What follows each tag in ParamBlockDesc2::AddParam and ParamOption.
enum ParamTags : int {
    p_end = -1,
    p_default = -2,      // the type's value: int, double, const MCHAR*
    p_range = -3,        // two of the type's values, both included
    p_accessor = -5,     // PBAccessor*
    p_assetTypeID = -7,  // int: the kind of file that a TYPE_FILENAME names
    p_refno = -8,        // int: the owner's reference that a P_OWNERS_REF parameter is
    // The parameter's control: int map, int ControlType2, then the type's own arguments, all int.
    p_ui = -4,
    // int count, and so many parameters whose controls are disabled while this one is off.
    p_enable_ctrls = -6,
    p_vals = -9,  // in p_ui: int values follow, one a choice
};
