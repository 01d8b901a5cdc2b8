// Writes JSON for people to read, the same text for the same values: lists and objects have a line
// for each of their values, or stand in one line as a whole.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host {

enum class JsonLayout { Lines, Line };

// Calls follow the structure of the text: in an object every value comes after its key. What lies
// in a line stays in it.
class JsonWriter {
  public:
    JsonWriter& OpenObject(JsonLayout layout);
    JsonWriter& OpenList(JsonLayout layout);
    // Closes what was opened last.
    JsonWriter& Close();
    JsonWriter& Key(std::string_view key);

    void Null() { Word("null"); }
    void Bool(bool value) { Word(value ? "true" : "false"); }
    void Whole(std::int64_t value) { Word(std::to_string(value)); }
    // Finite. Read as a double, and then made a float, it is the same to the bit.
    void Real(float value);
    // Finite; reads back as the same double.
    void Real(double value);
    // UTF-8.
    void Text(std::string_view utf8);

    // Of what is open, and the most that were so far.
    std::size_t DeepestLevel() const { return deepest_; }
    // With an end of line.
    std::string Take();

  private:
    struct Level {
        char end;
        bool inLines;
        bool isEmpty = true;
    };

    JsonWriter& Open(char begin, char end, JsonLayout layout);
    void BeginValue();
    void BreakLine();
    void Word(std::string_view text);

    std::string text_;
    std::vector<Level> levels_;
    std::size_t deepest_ = 0;
    bool afterKey_ = false;
};

}  // namespace host
