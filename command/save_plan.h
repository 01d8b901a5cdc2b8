// Which frames are read from where and saved as what, before the effect has its say.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "command/arguments.h"

namespace command {

struct SavePlan {
    // Of one frame when the input is no sequence.
    std::vector<int> frames;
    bool isSequence = false;
    std::function<std::string(int frame)> inputOf;
    // Without the frame number, which the host puts before the suffix.
    std::string output;
    // The shadow pass in the same way; empty for none.
    std::string shadow;
};

// Throws UsageError.
SavePlan MakePlan(const SaveArguments& arguments);

// A document's name ends in .psd or .psb. Throws UsageError.
void CheckSuffix(const std::string& output);

}  // namespace command
