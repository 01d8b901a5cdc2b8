// All that the user sees of a run: errors, warnings, what was saved, and how far it is.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace command {

enum class ProgressStyle {
    // A bar that is redrawn in place, on the error stream.
    Bar,
    // "PROGRESS: 42%" on the output stream, a line each time the number changes.
    Lines,
    None,
};

class Console {
  public:
    // The streams must outlive the console.
    Console(std::FILE* outStream, std::FILE* errStream) : out(outStream), err(errStream) {}

    // Only errors are shown from now on.
    void BeQuiet() { quiet = true; }
    void ShowProgressAs(ProgressStyle wanted) { style = wanted; }

    // One line on the error stream, under the program's name.
    void Error(std::string_view text);
    void Warning(std::string_view text);
    // One line on the output stream.
    void Say(std::string_view text);
    // As it stands, for listings; not kept back by BeQuiet.
    void Write(std::string_view text);

    // Percent of the whole run, 0 to 100. Never goes back: the highest so far is what is shown.
    void Progress(int percent);
    // Takes the bar away.
    void EndProgress() { ClearBar(); }

  private:
    void ClearBar();
    void Line(std::FILE* stream, std::string_view before, std::string_view text);

    std::FILE* out;
    std::FILE* err;
    bool quiet = false;
    ProgressStyle style = ProgressStyle::None;
    int highestPercent = 0;
    // -1 while none is shown.
    int shownPercent = -1;
    bool barShown = false;
};

// Whether the error stream, which the bar goes to, is a terminal.
bool IsTerminal(std::FILE* stream);

}  // namespace command
