#include "plugin/string_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "host/text.h"
#include "plugin/entry.h"
#include "plugin/parameters.h"

namespace {

// What users read, by the numbers under which it is asked for.
const std::map<int, std::string> contract = {
    {1, "veltrane"},
    {3, "veltrane"},
    {4, "veltrane Parameters"},
    {7, "Save Photoshop\u00ae Document As"},
    {12, "Name"},
    {13, "Visible"},
    {15, "Blending Mode"},
    {16, "Misc"},
    {17, "Save as Default"},
    {18, "veltrane"},
    {23, "Objects & Materials Output"},
    {24, "Render Elements Output"},
    {25, "Channels"},
    {26, "Layers (Alpha Matte)"},
    {27, "Layers (Color)"},
    {28, "Layers (Premultiplied Color)"},
    {29, "veltrane"},
    {32, "Reset to Default"},
    {33, "NullExport"},
    {34, "params"},
    {36, "Effect"},
    {38, "Layers (Luminance Matte)"},
    {39, "Scene Data Output"},
    {40, "%s ?"},
    {41, "Confirm overwriting:\n\n"},
    {43, "Layer with Transparency"},
    {44, "Layer (No Transparency)"},
    {45, "Layer + Mask"},
    {46, "Layer + Disabled Mask"},
    {47, "Layer + Alpha Channel"},
    {48, "Layers (Render Cut-out)"},
    {49, "Scene Layers Output"},
    {50, "Layers"},
    {53, "G-Buffer Output"},
    {55, "Named Selection Sets Output"},
    {56, "Selection Sets"},
    {57, "Enable output of all selection sets"},
    {58, "Disable output of all selection sets"},
    {59, "PSDExport"},
    {60, "PSD"},
    {61, "PSB"},
};

const std::filesystem::path root = VELTRANE_SOURCE_DIR;

std::string Read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

// The numbers of the pattern's first group in a text, as often as they stand there.
std::multiset<int> Numbers(const std::string& text, const std::regex& pattern) {
    std::multiset<int> numbers;
    for (std::sregex_iterator found(text.begin(), text.end(), pattern), end; found != end; ++found)
        numbers.insert(std::stoi((*found)[1]));
    return numbers;
}

class StringTable : public testing::Test {
  protected:
    void SetUp() override { plugin::Attach(); }
};

TEST_F(StringTable, EveryNumberHasItsText) {
    std::map<int, std::string> texts;
    for (int id = 0; id <= 0xffff; ++id) {
        if (const MCHAR* text = plugin::GetString(id)) texts[id] = host::ToUtf8(text);
    }
    EXPECT_EQ(texts, contract);
}

TEST_F(StringTable, ATextThatIsntThereIsNull) {
    EXPECT_EQ(plugin::GetString(0), nullptr);
    EXPECT_EQ(plugin::GetString(2), nullptr);
    EXPECT_EQ(plugin::GetString(5000), nullptr);
    EXPECT_EQ(plugin::GetString(-1), nullptr);
}

TEST_F(StringTable, AllCallersShareOneBuffer) {
    const MCHAR* name = plugin::GetString(12);
    EXPECT_EQ(host::ToUtf8(name), "Name");
    EXPECT_EQ(plugin::GetString(16), name);
    EXPECT_EQ(host::ToUtf8(name), "Misc");
    EXPECT_EQ(plugin::GetString(2), nullptr);
    EXPECT_EQ(plugin::GetString(1), name);
}

TEST_F(StringTable, NoNumberStandsInItTwice) {
    const auto rows =
        Numbers(Read(root / "plugin/strings.inc"), std::regex(R"(\nVELTRANE_STRING\((\d+),)"));
    EXPECT_EQ(rows.size(), contract.size());
    for (const int id : rows)
        EXPECT_EQ(rows.count(id), 1U) << id;
}

TEST_F(StringTable, HasTheTitlesOfTheRollups) {
    const std::map<int, std::string> titles = {
        {0, "veltrane Parameters"},        {1, "Render Elements Output"},
        {5, "Scene Layers Output"},        {7, "Named Selection Sets Output"},
        {2, "Objects & Materials Output"}, {6, "G-Buffer Output"},
        {4, "Scene Data Output"},
    };
    std::map<int, std::string> found;
    for (const parameters::Rollup& rollup : parameters::rollups)
        found[rollup.map] = host::ToUtf8(plugin::GetString(rollup.title));
    EXPECT_EQ(found, titles);
}

// The numbers that a file asks for: written there, or constants of the file. Others are the affair
// of the tables that they come from.
std::set<int> AskedFor(const std::string& code) {
    static const std::regex call(R"([Gg]etString\((\w+)\))");
    std::set<int> numbers;
    for (std::sregex_iterator found(code.begin(), code.end(), call), end; found != end; ++found) {
        const std::string argument = (*found)[1];
        const std::regex constant(R"(constexpr int )" + argument + R"( = (\d+);)");
        std::smatch value;
        if (argument.find_first_not_of("0123456789") == std::string::npos) {
            numbers.insert(std::stoi(argument));
        } else if (std::regex_search(code, value, constant)) {
            numbers.insert(std::stoi(value[1]));
        }
    }
    return numbers;
}

TEST_F(StringTable, HasEveryTextThatTheCodeAsksFor) {
    EXPECT_EQ(AskedFor("GetString(3) services.getString(17) GetString(id) "
                       "constexpr int nameString = 34; GetString(nameString)"),
              (std::set<int>{3, 17, 34}));
    std::set<int> numbers;
    for (const char* folder : {"effect", "plugin", "ui"}) {
        for (const auto& file : std::filesystem::recursive_directory_iterator(root / folder)) {
            const std::string extension = file.path().extension().string();
            if (extension == ".cpp" || extension == ".h")
                numbers.merge(AskedFor(Read(file.path())));
        }
    }
    EXPECT_TRUE(numbers.contains(1)) << "the library's description";
    for (const int id : numbers)
        EXPECT_TRUE(contract.contains(id)) << id;
}

TEST_F(StringTable, IsInTheResourcesToo) {
    const std::string script = Read(root / "ui/veltrane.rc");
    const std::size_t table = script.find("STRINGTABLE\nBEGIN\n");
    const std::size_t rows = script.find("#include \"plugin/strings.inc\"\n");
    ASSERT_NE(table, std::string::npos);
    ASSERT_NE(rows, std::string::npos);
    EXPECT_LT(table, rows);
    EXPECT_LT(rows, script.find("\nEND\n", table));
    EXPECT_NE(script.find("#pragma code_page(65001)\n"), std::string::npos)
        << "the rows are in UTF-8";
}

}  // namespace
