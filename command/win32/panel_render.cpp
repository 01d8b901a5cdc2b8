#include "command/win32/panel_render.h"

#include <algorithm>
#include <filesystem>
#include <random>
#include <string_view>
#include <system_error>
#include <utility>

#include "command/ascii_case.h"
#include "command/failure.h"
#include "command/native_path.h"
#include "command/system_message.h"
#include "command/win32/panel_scene.h"

namespace command {
namespace {

// What a box on the screen has room for.
constexpr std::size_t mostLines = 20;

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    if (from.empty()) return;
    for (std::size_t at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

// The last line that begins so, without its beginning; empty for none.
std::string LastLineAfter(std::string_view mark, const std::string& text) {
    std::size_t at = text.rfind(mark);
    while (at != text.npos && at > 0 && text[at - 1] != '\n')
        at = text.rfind(mark, at - 1);
    if (at == text.npos) return {};
    const std::size_t start = at + mark.size();
    return text.substr(start, text.find_first_of("\r\n", start) - start);
}

// A name of its own in the document's folder; empty where the document's own suffix is none that
// the command takes, or where the system wouldn't take the whole path.
std::string UnfinishedName(const std::string& document) {
    const std::filesystem::path place = Native(document);
    const std::string suffix = Utf8(place.extension());
    const std::string lower = AsciiLower(suffix);
    if (lower != ".psd" && lower != ".psb") return {};
    std::random_device random;
    const std::filesystem::path path =
        place.parent_path() / Native("veltrane-" + std::to_string(random()) + suffix);
    return path.native().size() < MAX_PATH ? Utf8(path) : std::string();
}

}  // namespace

std::string FirstLines(const std::string& text, std::size_t most) {
    std::size_t end = 0;
    for (std::size_t line = 0; line < most && end != text.size(); ++line) {
        const std::size_t lineBreak = text.find('\n', end);
        end = lineBreak == text.npos ? text.size() : lineBreak + 1;
    }
    const auto more =
        std::count(text.begin() + static_cast<std::ptrdiff_t>(end), text.end(), '\n') +
        (end != text.size() && text.back() != '\n' ? 1 : 0);
    std::string first = text.substr(0, end);
    if (more > 0) first += "... and " + std::to_string(more) + " more lines\n";
    return first;
}

PanelRender::PanelRender(PanelRenderFiles renderFiles)
    : files(std::move(renderFiles)), unfinished(UnfinishedName(files.document)) {
    if (folder.Path().empty()) throw InputError(folder.Fault());
    sceneCopy = Utf8(Native(folder.Path()) / "scene.json");
    PanelScene::WriteCopy(sceneCopy);
    std::vector<std::string> words{files.program, "save",       files.input, "--scene",
                                   sceneCopy,     "--progress", "lines"};
    if (!unfinished.empty()) words.insert(words.end(), {"-o", unfinished});
    command = std::make_unique<ChildProcess>(words);
}

PanelRender::~PanelRender() {
    command.reset();
    std::error_code none;
    if (!unfinished.empty()) std::filesystem::remove(Native(unfinished), none);
}

std::string PanelRender::Progress() const {
    return LastLineAfter("PROGRESS: ", command->Output());
}

std::string PanelRender::InUsersNames(std::string text) const {
    ReplaceAll(text, unfinished, files.document);
    ReplaceAll(text, sceneCopy, files.sceneName);
    return text;
}

PanelRender::Outcome PanelRender::End() {
    Outcome outcome;
    outcome.saved = command->ExitCode() == 0;
    outcome.told = FirstLines(InUsersNames(command->Errors()), mostLines);
    if (!outcome.saved) {
        if (outcome.told.empty()) outcome.told = files.input + ": the render failed";
        return outcome;
    }
    const std::string saved = LastLineAfter("saved ", command->Output());
    outcome.said = "Saved " + (saved.empty() ? files.document : InUsersNames(saved));
    if (unfinished.empty()) return outcome;
    if (MoveFileExW(Native(unfinished).c_str(), Native(files.document).c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return outcome;
    }
    const auto reason = static_cast<int>(GetLastError());
    outcome.saved = false;
    outcome.told = files.document + ": cannot be replaced (" +
                   SystemMessage({reason, std::system_category()}) + "); the new document is in " +
                   unfinished + "\n" + outcome.told;
    // It stays.
    unfinished.clear();
    return outcome;
}

}  // namespace command
