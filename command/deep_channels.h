// Which channels of a deep part are its depth, its opacity and its ids.
#pragma once

#include "command/render_file.h"

namespace command {

// For the colours of `beauty`, whose layer lies in a deep part. Depth is the channel Z of the same
// layer, else of the part; so is ZBack; alpha is the beauty's, else the part's A. Ids are the
// unsigned channels that are nothing else, and those that renderers call ids, in the file's order
// and no more than mostDeepIds. Throws InputError without a Z, and when a colour is depth or an id.
DeepChannels ChooseDeepChannels(const Description& file, const Beauty& beauty);

}  // namespace command
