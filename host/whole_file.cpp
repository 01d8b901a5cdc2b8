#include "host/whole_file.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iterator>
#include <random>
#include <system_error>

#include "host/disk_file.h"
#include "host/input_error.h"

namespace host {
namespace {

namespace fs = std::filesystem;

// More names than this aren't tried for a file beside the one that is replaced.
constexpr int mostNames = 100;
// As many as systems follow.
constexpr int mostLinks = 40;

struct Advice {
    std::errc fault;
    const char* text;
};

constexpr Advice advices[] = {
    {std::errc::no_space_on_device, "free some space or choose another place"},
    {std::errc::permission_denied, "change its permissions or choose another place"},
    {std::errc::operation_not_permitted, "change its permissions or choose another place"},
    {std::errc::read_only_file_system, "choose another place"},
    {std::errc::device_or_resource_busy, "close the program that has it open"},
    {std::errc::no_such_file_or_directory, "create its folder first or choose another"},
    {std::errc::not_a_directory, "create its folder first or choose another"},
    {std::errc::is_a_directory, "choose another name"},
    {std::errc::invalid_argument, "choose another name"},
    {std::errc::filename_too_long, "choose a shorter name"},
    {std::errc::too_many_symbolic_link_levels, "mend the link or choose another name"},
    {std::errc::file_too_large, "choose a place that takes larger files"},
};

[[noreturn]] void Fail(const std::string& path, std::errc fault) {
    const auto* advice = std::find_if(std::begin(advices), std::end(advices),
                                      [fault](const Advice& each) { return each.fault == fault; });
    const bool isKnown = advice != std::end(advices);
    throw InputError(path + ": cannot be written (" + std::make_error_code(fault).message() +
                     "); " + (isKnown ? advice->text : "check the disk or choose another place"));
}

void FailIf(const std::string& path, const std::error_code& fault) {
    if (fault) Fail(path, static_cast<std::errc>(fault.default_error_condition().value()));
}

fs::path Native(const std::string& path) {
    if (path.empty()) throw InputError("the file has no name; give one");
    try {
        return {std::u8string(path.begin(), path.end())};
    } catch (const std::exception&) {
        // No text.
        Fail(path, std::errc::invalid_argument);
    }
}

// The file that a chain of links ends at, which may not be there.
fs::path FollowLinks(const std::string& path, fs::path file) {
    std::error_code fault;
    for (int links = 0; fs::is_symlink(fs::symlink_status(file, fault)); ++links) {
        if (links == mostLinks) Fail(path, std::errc::too_many_symbolic_link_levels);
        const fs::path target = fs::read_symlink(file, fault);
        FailIf(path, fault);
        file = file.parent_path() / target;
    }
    return file;
}

void CheckOldFile(const std::string& path, const fs::path& file) {
    std::error_code fault;
    const fs::file_status status = fs::status(file, fault);
    if (!fs::exists(status)) {
        if (status.type() == fs::file_type::none) FailIf(path, fault);
        return;
    }
    if (fs::is_directory(status)) Fail(path, std::errc::is_a_directory);
    if (!fs::is_regular_file(status)) {
        throw InputError(path + ": cannot be written (not a file); choose another name");
    }
    FailIf(path, MayWrite(file));
}

// Short, so that it is no longer than the system takes where the file's own name isn't.
std::string TemporaryName() {
    std::random_device random;
    return "veltrane-" + std::to_string(random()) + ".tmp";
}

}  // namespace

void ReplaceWholeFile(const std::string& path, std::string_view bytes) {
    const fs::path file = FollowLinks(path, Native(path));
    if (!file.has_filename()) Fail(path, std::errc::is_a_directory);
    CheckOldFile(path, file);

    fs::path beside;
    std::error_code fault = std::make_error_code(std::errc::file_exists);
    for (int tries = 0; tries < mostNames && fault == std::errc::file_exists; ++tries) {
        beside = file.parent_path() / TemporaryName();
        fault = WriteNewFile(beside, bytes);
    }
    // Someone else's then.
    if (fault == std::errc::file_exists) FailIf(path, fault);

    std::error_code ignored;
    if (!fault && fs::exists(file, ignored)) {
        fs::permissions(beside, fs::status(file, ignored).permissions(), fault);
    }
    if (!fault) fault = MoveOver(beside, file);
    if (fault) fs::remove(beside, ignored);
    FailIf(path, fault);
}

}  // namespace host
