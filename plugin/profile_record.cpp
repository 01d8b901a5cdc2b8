#include "plugin/profile_record.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace plugin {
namespace {

// Far above any settings file; a larger one is something else under its name.
constexpr std::size_t largestProfile = std::size_t{1} << 20;

constexpr char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool EqualNames(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return Lower(a) == Lower(b); });
}

std::string_view Trim(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Takes the first line off `rest`.
std::string_view NextLine(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return Trim(line);
}

std::optional<std::string_view> FindValue(std::string_view profile, std::string_view section,
                                          std::string_view key) {
    bool inSection = false;
    while (!profile.empty()) {
        const std::string_view line = NextLine(profile);
        if (line.empty() || line.front() == ';') continue;
        if (line.front() == '[') {
            inSection = EqualNames(Trim(line.substr(1, line.find(']') - 1)), section);
            continue;
        }
        const std::size_t equals = line.find('=');
        if (inSection && equals != std::string_view::npos &&
            EqualNames(Trim(line.substr(0, equals)), key)) {
            return Trim(line.substr(equals + 1));
        }
    }
    return std::nullopt;
}

bool DecodeByte(std::string_view digits, std::uint8_t& byte) {
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, byte, 16);
    return error == std::errc() && stop == end;
}

// The program's own names of sections and keys are ASCII.
std::string Narrow(const MSTR& ascii) {
    std::string narrow;
    for (int i = 0; i < ascii.Length(); ++i)
        narrow.push_back(static_cast<char>(ascii.data()[i]));
    return narrow;
}

}  // namespace

bool FindProfileRecord(std::string_view profile, std::string_view section, std::string_view key,
                       std::span<std::uint8_t> record) {
    const std::optional<std::string_view> digits = FindValue(profile, section, key);
    if (!digits || digits->size() != 2 * (record.size() + 1)) return false;
    std::vector<std::uint8_t> bytes(record.size() + 1);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (!DecodeByte(digits->substr(2 * i, 2), bytes[i])) return false;
    }
    std::uint8_t checksum = 0;
    for (std::size_t i = 0; i < record.size(); ++i) {
        checksum = static_cast<std::uint8_t>(checksum + bytes[i]);
    }
    if (checksum != bytes.back()) return false;
    std::copy_n(bytes.begin(), record.size(), record.begin());
    return true;
}

bool ReadProfileRecord(const MSTR& path, const MSTR& section, const MSTR& key,
                       std::span<std::uint8_t> record) {
    std::ifstream file;
    try {
        file.open(std::filesystem::path(path.data()), std::ios::binary);
    } catch (const std::exception&) {
        // The path is no valid UTF-16.
        return false;
    }
    std::string profile;
    char block[4096];
    while (file.read(block, sizeof block) || file.gcount() > 0) {
        profile.append(block, static_cast<std::size_t>(file.gcount()));
        if (profile.size() > largestProfile) return false;
    }
    return FindProfileRecord(profile, Narrow(section), Narrow(key), record);
}

}  // namespace plugin
