// Everything a program needs to write layered documents in file form.
#pragma once

#include "psdfile/blend_keys.h"                     // IWYU pragma: export
#include "psdfile/channel_image_data.h"             // IWYU pragma: export
#include "psdfile/channel_source.h"                 // IWYU pragma: export
#include "psdfile/color_lookup_adjustment_layer.h"  // IWYU pragma: export
#include "psdfile/color_lookup_profile.h"           // IWYU pragma: export
#include "psdfile/cube_lut.h"                       // IWYU pragma: export
#include "psdfile/curves_adjustment_layer.h"        // IWYU pragma: export
#include "psdfile/deflate_functions.h"              // IWYU pragma: export
#include "psdfile/file.h"                           // IWYU pragma: export
#include "psdfile/four_char_code.h"                 // IWYU pragma: export
#include "psdfile/image_resources.h"                // IWYU pragma: export
#include "psdfile/layer_blocks.h"                   // IWYU pragma: export
#include "psdfile/part.h"                           // IWYU pragma: export
#include "psdfile/part_list.h"                      // IWYU pragma: export
#include "psdfile/primitives.h"                     // IWYU pragma: export
#include "psdfile/progress.h"                       // IWYU pragma: export
#include "psdfile/scene_data_blocks.h"              // IWYU pragma: export
#include "psdfile/solid_color_adjustment_layer.h"   // IWYU pragma: export
#include "psdfile/stream_state.h"                   // IWYU pragma: export
#include "psdfile/text.h"                           // IWYU pragma: export
#include "psdfile/thumbnail.h"                      // IWYU pragma: export
