#include "command/win32/child_process.h"

#include <system_error>

#include "command/failure.h"
#include "command/system_message.h"
#include "host/text.h"

namespace command {
namespace {

// Milliseconds.
constexpr DWORD longestEnd = 10'000;

// By the rules of the run-time library: backslashes before a quotation mark count double.
std::wstring Quoted(const std::wstring& word) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t letter : word) {
        if (letter == L'\\') {
            ++backslashes;
            continue;
        }
        quoted.append(letter == L'"' ? 2 * backslashes + 1 : backslashes, L'\\');
        backslashes = 0;
        quoted += letter;
    }
    quoted.append(2 * backslashes, L'\\');
    return quoted + L'"';
}

std::string LastFault() {
    return SystemMessage({static_cast<int>(GetLastError()), std::system_category()});
}

// Null when the system refuses it.
HANDLE MakeJob() {
    HANDLE job = CreateJobObjectW(nullptr, nullptr);
    if (!job) return nullptr;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

}  // namespace

std::wstring CommandLineOf(const std::vector<std::string>& words) {
    std::wstring line;
    for (const std::string& word : words) {
        if (!line.empty()) line += L' ';
        line += Quoted(host::FromUtf8(word).data());
    }
    return line;
}

ChildProcess::Handle ChildProcess::Stream::Open() {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (!CreatePipe(&read, &write, &inherited, 0)) throw InputError(LastFault());
    reading.reset(read);
    Handle writing(write);
    SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
    return writing;
}

void ChildProcess::Stream::Read() {
    DWORD available = 0;
    while (!ended) {
        if (!PeekNamedPipe(reading.get(), nullptr, 0, nullptr, &available, nullptr)) {
            // The program has closed its end.
            ended = true;
            return;
        }
        if (available == 0) return;
        const std::size_t before = text.size();
        text.resize(before + available);
        DWORD read = 0;
        if (!ReadFile(reading.get(), text.data() + before, available, &read, nullptr)) read = 0;
        text.resize(before + read);
    }
}

ChildProcess::ChildProcess(const std::vector<std::string>& words) {
    const Handle outputEnd = output.Open();
    const Handle errorEnd = errors.Open();
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = outputEnd.get();
    start.hStdError = errorEnd.get();
    PROCESS_INFORMATION started{};
    std::wstring line = CommandLineOf(words);
    // It starts nothing before it is in the job.
    constexpr DWORD flags = CREATE_NO_WINDOW | CREATE_SUSPENDED;
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr,
                        &start, &started)) {
        throw InputError(words.front() + ": " + LastFault());
    }
    process.reset(started.hProcess);
    job.reset(MakeJob());
    if (job) AssignProcessToJobObject(job.get(), process.get());
    ResumeThread(started.hThread);
    CloseHandle(started.hThread);
}

ChildProcess::~ChildProcess() {
    if (!process || WaitForSingleObject(process.get(), 0) != WAIT_TIMEOUT) return;
    if (job) TerminateJobObject(job.get(), 1);
    TerminateProcess(process.get(), 1);
    // Its files are closed then. One that the system can't end isn't waited for.
    WaitForSingleObject(process.get(), longestEnd);
}

bool ChildProcess::Read() {
    const bool hasEnded = WaitForSingleObject(process.get(), 0) == WAIT_OBJECT_0;
    output.Read();
    errors.Read();
    if (!hasEnded) return true;
    GetExitCodeProcess(process.get(), &exitCode);
    return false;
}

}  // namespace command
