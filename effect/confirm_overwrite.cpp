#include "effect/confirm_overwrite.h"

#include <string>

namespace effect {
namespace {

// In the string table: what the question begins with, and its form with "%s" for the name.
constexpr int headingString = 41;
constexpr int questionString = 40;

MSTR OverwriteText(const LibraryServices& services, const MSTR& name) {
    const MSTR heading(services.getString(headingString));
    std::basic_string<MCHAR> question = MSTR(services.getString(questionString)).data();
    const std::size_t place = question.find(_M("%s"));
    if (place != question.npos) question.replace(place, 2, name.data());
    return heading + question.c_str();
}

}  // namespace

bool ConfirmOverwrite(const LibraryServices& services, const MSTR& name, bool& ask) {
    if (!ask) return true;
    const OverwriteAnswer answer = services.askOverwrite(OverwriteText(services, name));
    if (answer.overwrite && answer.askNoMore) ask = false;
    return answer.overwrite;
}

}  // namespace effect
