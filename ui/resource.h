// Numbers of the library's resources. The resource script and the code that shows the dialogs
// include them; the controls that the host binds stand in plugin/parameters.h under the same
// numbers. A control's number is its template's own: two templates use some of them twice.
#pragma once

// Dialog templates: the rollups, in their order, then the dialogs.
#define IDD_MAIN 4712
#define IDD_ELEMENTS 4714
#define IDD_SCENE_LAYERS 122
#define IDD_SELECTION_SETS 28676
#define IDD_OBJECTS 123
#define IDD_GBUFFER 4715
#define IDD_SCENE_DATA 4716
#define IDD_ADVANCED 127
#define IDD_FILE_EXISTS 121

// The header of the main rollup at a scale of 1.0, 1.25, 1.5 and 2.0.
#define IDB_HEADER_100 126
#define IDB_HEADER_125 141
#define IDB_HEADER_150 142
#define IDB_HEADER_200 139
// What a matte becomes: six opaque pictures of 27 by 18 side by side. Channels, alpha matte,
// cut-out, then the same for disabled and highlighted items.
#define IDB_OUTPUT_KINDS 133
// Check boxes of the lists: five pictures of 16 by 16 side by side, with alpha. Off, on, off and
// on in a disabled list, mixed. IDB_CHECK_OFF is one such picture, which takes the place of the
// first.
#define IDB_CHECKS 148
#define IDB_CHECK_OFF 146

// The list's frame, and the bar below the list that the user drags: frame and rollup grow and
// shrink with the list, which is the last thing in it. In IDD_ELEMENTS, IDD_SCENE_LAYERS and
// IDD_SELECTION_SETS.
#define IDC_LIST_FRAME 65535
#define IDC_LIST_SPLITTER 1080

// IDD_MAIN
#define IDC_HEADER 1161
// Hidden: places on the header picture that can be clicked.
#define IDC_ABOUT_ZONE 1103
#define IDC_HELP_ZONE 1104
#define IDC_MATCH_RENDER_OUTPUT 1156
#define IDC_FILE_FORMAT 1195
#define IDC_FILE_NAME 1062
#define IDC_FILES 1001
#define IDC_DEPTH_8 1107
#define IDC_DEPTH_16 1108
#define IDC_DEPTH_32 1110
#define IDC_RESOLUTION 1144
#define IDC_RESOLUTION_SPIN 1145
#define IDC_RESOLUTION_72 1146
#define IDC_RESOLUTION_150 1147
#define IDC_RESOLUTION_300 1148
#define IDC_OUTPUT_RENDER 1080
#define IDC_OUTPUT_RENDER_AS 1143
#define IDC_RENDER_PREMULTIPLIED 1129
#define IDC_ADVANCED_OPTIONS 1008

// IDD_ELEMENTS
#define IDC_OUTPUT_ELEMENTS 1088
#define IDC_ELEMENTS_GROUP 1184
#define IDC_ELEMENTS_GROUP_MASK 1186
// The pane of the selected element: its frame, its labels, its controls.
#define IDC_ELEMENT_FRAME 1091
#define IDC_ELEMENT_NAME_LABEL 1083
#define IDC_ELEMENT_NAME 1063
#define IDC_ELEMENT_ENABLED 1048
#define IDC_ELEMENT_OUTPUT_AS_LABEL 1087
#define IDC_ELEMENT_LAYER 1112
#define IDC_ELEMENT_CHANNEL 1114
#define IDC_ELEMENT_PREMULTIPLIED 1092
#define IDC_ELEMENT_SPLIT 1159
#define IDC_ELEMENT_BLENDING_LABEL 1084
#define IDC_ELEMENT_BLENDING 1045
#define IDC_ELEMENT_VISIBLE 1058
#define IDC_ELEMENT_CLIPPING 1059
#define IDC_ELEMENT_ALPHA_LABEL 1085
#define IDC_ELEMENT_TRANSPARENCY 1056
#define IDC_ELEMENT_MASK 1057
#define IDC_ELEMENT_CORRECTIONS_LABEL 1086
#define IDC_ELEMENT_GAMMA 1160
#define IDC_ELEMENT_COLOR 1060
#define IDC_AUTO_SORT 1079
#define IDC_ELEMENT_UP 1069
#define IDC_ELEMENT_DOWN 1068
// Hidden.
#define IDC_UPDATE_ELEMENTS 1070
#define IDC_ELEMENT_LIST 1043

// IDD_SCENE_LAYERS
#define IDC_OUTPUT_SCENE_LAYERS 1149
#define IDC_SCENE_LAYERS_AS_LABEL 1151
#define IDC_SCENE_LAYERS_AS 1152
#define IDC_SCENE_LAYERS_GROUP 1150
#define IDC_UPDATE_SCENE_LAYERS 1158
#define IDC_SCENE_LAYER_LIST 1153

// IDD_SELECTION_SETS
#define IDC_OUTPUT_SELECTION_SETS 1187
#define IDC_SELECTION_SETS_AS_LABEL 1188
#define IDC_SELECTION_SETS_AS 1190
#define IDC_SELECTION_SETS_GROUP 1189
// Hidden.
#define IDC_UPDATE_SELECTION_SETS 1191
#define IDC_SELECTION_SET_LIST 1192

// IDD_OBJECTS
#define IDC_OUTPUT_NODE_IDS 1039
#define IDC_NODE_IDS_AS_LABEL 1096
#define IDC_NODE_IDS_AS 1105
#define IDC_NODE_IDS_GROUP 1010
#define IDC_NODE_ID_LIST_LABEL 1097
#define IDC_NODE_ID_LIST 1075
#define IDC_OUTPUT_MATERIAL_IDS 1040
#define IDC_MATERIAL_IDS_AS_LABEL 1098
#define IDC_MATERIAL_IDS_AS 1106
#define IDC_MATERIAL_IDS_GROUP 1009
#define IDC_MATERIAL_ID_LIST_LABEL 1099
#define IDC_MATERIAL_ID_LIST 1076
#define IDC_OUTPUT_OBJECTS 1041
#define IDC_OBJECTS_AS_LABEL 1095
#define IDC_OBJECTS_AS 1109
#define IDC_OBJECTS_GROUP 1007
#define IDC_OBJECT_LIST 1094
#define IDC_ADD_SELECTED 1011
#define IDC_ADD_OBJECTS 1005
#define IDC_REMOVE_OBJECTS 1004
#define IDC_OBJECTS_UP 1006
#define IDC_OBJECTS_DOWN 1008

// IDD_GBUFFER
#define IDC_GBUFFER_NODE_ID 1055
#define IDC_GBUFFER_MATERIAL_ID 1054
#define IDC_GBUFFER_RENDER_ID 1053
#define IDC_GBUFFER_NORMAL 1060
#define IDC_GBUFFER_UNCLAMPED 1061

// IDD_SCENE_DATA
#define IDC_EMBED_CAMERA 1130
#define IDC_EMBED_HELPERS 1131
#define IDC_HELPER_WILDCARD 1133

// IDD_ADVANCED, besides IDOK and IDCANCEL
#define IDC_GAMMA 1164
#define IDC_GAMMA_CONFIG 1216
#define IDC_COLOR 1167
#define IDC_COLOR_CONFIG 1217
#define IDC_HIDE_MATTE_LAYERS 1169
#define IDC_DENOISER_CHANNELS 1170
#define IDC_COMPATIBILITY 1168

// IDD_FILE_EXISTS, besides IDYES and IDNO
#define IDC_FILE_EXISTS_ICON 1137
#define IDC_FILE_EXISTS_TEXT 1003
#define IDC_DO_NOT_ASK 1135
