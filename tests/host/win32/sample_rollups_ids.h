// Numbers of the dialogs and texts in sample_rollups.rc.
#pragma once

#define SAMPLE_ROLLUP_MAIN 200
#define SAMPLE_ROLLUP_MORE 201
// With a frame, as a template of its own window has it.
#define SAMPLE_ROLLUP_FRAMED 202
// Names a window class that isn't there, so that no dialog can be made of it.
#define SAMPLE_ROLLUP_BROKEN 203

#define SAMPLE_TEXT_MAIN 300
#define SAMPLE_TEXT_MORE 301
#define SAMPLE_TEXT_CHANNELS 302
#define SAMPLE_TEXT_LAYERS 303
#define SAMPLE_TEXT_MATTES 304

#define SAMPLE_ID_ON 1001
#define SAMPLE_ID_FOLDER 1002
#define SAMPLE_ID_8_BITS 1003
#define SAMPLE_ID_16_BITS 1004
#define SAMPLE_ID_32_BITS 1005
#define SAMPLE_ID_NUMBER 1006
#define SAMPLE_ID_ARROWS 1007
#define SAMPLE_ID_TEXT 1008
#define SAMPLE_ID_COMBO 1009
#define SAMPLE_ID_NODES 1010
#define SAMPLE_ID_LIVE_TEXT 1011
#define SAMPLE_ID_LABEL 1012
#define SAMPLE_ID_OTHER 1013
#define SAMPLE_ID_DRAWN 1014
// In no template.
#define SAMPLE_ID_MISSING 1999
