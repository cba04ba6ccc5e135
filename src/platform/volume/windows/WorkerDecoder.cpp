#include "platform/volume/windows/WorkerDecoder.h"

#include <windows.h>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "platform/volume/windows/PictureWorker.h"
#include "platform/volume/windows/WideText.h"

namespace ostrevin {
namespace {

using Header = std::array<std::int32_t, 2>;  // width and height

/// A handle of the system that is null when there is none.
class Handle {
  public:
    explicit Handle(HANDLE handle = nullptr) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { Close(); }

    [[nodiscard]] HANDLE Get() const { return handle_; }
    void Close() {
        if (handle_ != nullptr) {
            CloseHandle(std::exchange(handle_, nullptr));
        }
    }

  private:
    HANDLE handle_;
};

struct Pipe {
    Handle reading;
    Handle writing;
};

/// A pipe whose one end, and only that, a process that is started gets.
std::optional<Pipe> MakePipe(Handle Pipe::*inherited) {
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (CreatePipe(&reading, &writing, nullptr, 0) == 0) {
        return std::nullopt;
    }
    Pipe pipe{Handle(reading), Handle(writing)};
    SetHandleInformation((pipe.*inherited).Get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    return pipe;
}

/// Little memory and time, and no processes of its own.
Handle MakeJob() {
    constexpr SIZE_T kMostMemory = SIZE_T{512} << 20U;
    constexpr LONGLONG kMostTime = LONGLONG{8} * 10'000'000;  // of the processor, in units of 100 ns
    Handle job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags =
        JOB_OBJECT_LIMIT_PROCESS_MEMORY | JOB_OBJECT_LIMIT_PROCESS_TIME | JOB_OBJECT_LIMIT_ACTIVE_PROCESS |
        JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
    limits.BasicLimitInformation.PerProcessUserTimeLimit.QuadPart = kMostTime;
    limits.BasicLimitInformation.ActiveProcessLimit = 1;
    limits.ProcessMemoryLimit = kMostMemory;
    SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

/// The user without any privilege and without what administrators may; null where the system does not make
/// it.
Handle MakeRestrictedToken() {
    HANDLE own = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_DUPLICATE | TOKEN_ASSIGN_PRIMARY | TOKEN_QUERY, &own) ==
        0) {
        return Handle();
    }
    const Handle token(own);
    SID_IDENTIFIER_AUTHORITY authority = {SECURITY_NT_AUTHORITY};
    SID_AND_ATTRIBUTES administrators{};
    HANDLE restricted = nullptr;
    if (AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0,
                                 0, 0, 0, &administrators.Sid) != 0) {
        CreateRestrictedToken(token.Get(), DISABLE_MAX_PRIVILEGE, 1, &administrators, 0, nullptr, 0, nullptr,
                              &restricted);
        FreeSid(administrators.Sid);
    }
    return Handle(restricted);
}

/// A worker at its work, which ends with the object.
class Worker {
  public:
    Worker(const std::wstring& program, const ImageSize& size, std::chrono::milliseconds patience)
        : job_(MakeJob()) {
        std::optional<Pipe> input = MakePipe(&Pipe::reading);
        std::optional<Pipe> output = MakePipe(&Pipe::writing);
        if (input && output && Start(program, size, input->reading.Get(), output->writing.Get())) {
            input_ = std::move(input->writing);
            output_ = std::move(output->reading);
            // What the worker is asked for and what it says both wait for it: it is ended, and they with it.
            CreateTimerQueueTimer(&timer_, nullptr, &End, process_.Get(),
                                  static_cast<DWORD>(patience.count()), 0, WT_EXECUTEONLYONCE);
        }
    }
    ~Worker() {
        if (timer_ != nullptr) {
            DeleteTimerQueueTimer(nullptr, timer_, INVALID_HANDLE_VALUE);
        }
        if (process_.Get() != nullptr) {
            End(process_.Get(), TRUE);
            WaitForSingleObject(process_.Get(), INFINITE);
        }
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Gives it the bytes to work on, all that it takes of them.
    void Give(std::span<const std::byte> bytes) {
        DWORD written = 0;
        while (!bytes.empty() && timer_ != nullptr &&
               WriteFile(input_.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) !=
                   0) {
            bytes = bytes.subspan(written);
        }
        input_.Close();
    }
    /// What it writes up to its end; none when that is more than the most, or when it ends other than with 0.
    std::optional<std::vector<std::byte>> Take(std::size_t most) {
        constexpr DWORD kLook = 5;  // milliseconds
        std::vector<std::byte> bytes;
        // Not by waiting for the pipe: when a worker crashes, a debugger may have got its end of it.
        for (bool ended = timer_ == nullptr; bytes.size() <= most;) {
            const DWORD ready = Ready();
            if (ready > 0) {
                ReadTo(bytes, ready);
            } else if (ended) {
                break;
            } else {
                ended = WaitForSingleObject(process_.Get(), kLook) == WAIT_OBJECT_0;
            }
        }
        DWORD code = 1;
        const bool ended = bytes.size() <= most && timer_ != nullptr &&
                           WaitForSingleObject(process_.Get(), INFINITE) == WAIT_OBJECT_0 &&
                           GetExitCodeProcess(process_.Get(), &code) != 0;
        return ended && code == 0 ? std::optional(std::move(bytes)) : std::nullopt;
    }

  private:
    /// How many bytes there are to read.
    [[nodiscard]] DWORD Ready() const {
        DWORD ready = 0;
        PeekNamedPipe(output_.Get(), nullptr, 0, nullptr, &ready, nullptr);
        return ready;
    }
    void ReadTo(std::vector<std::byte>& bytes, DWORD ready) const {
        const std::size_t before = bytes.size();
        bytes.resize(before + ready);
        DWORD count = 0;
        ReadFile(output_.Get(), bytes.data() + before, ready, &count, nullptr);
        bytes.resize(before + count);
    }
    static void CALLBACK End(void* process, BOOLEAN /*timerFired*/) { TerminateProcess(process, 1); }

    bool Start(const std::wstring& program, const ImageSize& size, HANDLE input, HANDLE output) {
        std::wstring command =
            L"\"" + program + L"\" " +
            ToWide(kDecodePicture + (" " + std::to_string(size.cx) + " ") + std::to_string(size.cy));
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES | STARTF_FORCEOFFFEEDBACK;
        startup.hStdInput = input;
        startup.hStdOutput = output;
        PROCESS_INFORMATION started{};
        constexpr DWORD kFlags = CREATE_SUSPENDED | CREATE_NO_WINDOW;
        const Handle token = MakeRestrictedToken();
        const bool restricted =
            token.Get() != nullptr &&
            CreateProcessAsUserW(token.Get(), program.c_str(), command.data(), nullptr, nullptr, TRUE, kFlags,
                                 nullptr, nullptr, &startup, &started) != 0;
        // Where the system refuses that, the other limits hold still.
        if (!restricted && CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, kFlags,
                                          nullptr, nullptr, &startup, &started) == 0) {
            return false;
        }
        process_ = Handle(started.hProcess);
        const Handle thread(started.hThread);
        // Neither can a program that is in a job itself put another one in, on older systems.
        AssignProcessToJobObject(job_.Get(), process_.Get());
        ResumeThread(thread.Get());
        return true;
    }

    Handle job_;
    Handle process_;
    Handle input_;
    Handle output_;
    HANDLE timer_ = nullptr;  // there is one as long as a worker works
};

/// What the worker wrote; null when it is no picture that fits the box.
BitmapHandle PictureIn(std::span<const std::byte> output, const ImageSize& size) {
    Header header{};
    if (output.size() < sizeof header) {
        return nullptr;
    }
    std::memcpy(header.data(), output.data(), sizeof header);
    const auto [width, height] = header;
    if (width <= 0 || width > size.cx || height <= 0 || height > size.cy) {
        return nullptr;
    }
    const std::size_t points = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (output.size() != sizeof header + points * sizeof(std::uint32_t)) {
        return nullptr;
    }
    auto picture = std::make_unique<Bitmap>(Bitmap{width, height, std::vector<std::uint32_t>(points)});
    std::memcpy(picture->points.data(), output.data() + sizeof header, points * sizeof(std::uint32_t));
    return picture;
}

bool Reads(const std::string& extension) {
    constexpr std::array kExtensions = {"BMP", "DIB", "GIF", "JFIF", "JPE", "JPEG", "JPG"};
    return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

}  // namespace

PictureDecoder MakeWorkerDecoder(const std::string& program, std::chrono::milliseconds patience) {
    const auto decode = [program = ToWide(program), patience](std::span<const std::byte> file,
                                                              const ImageSize& size) -> BitmapHandle {
        if (size.cx <= 0 || size.cy <= 0) {
            return nullptr;
        }
        Worker worker(program, size, patience);
        worker.Give(file);
        const std::size_t most = sizeof(Header) + sizeof(std::uint32_t) * static_cast<std::size_t>(size.cx) *
                                                      static_cast<std::size_t>(size.cy);
        const std::optional<std::vector<std::byte>> output = worker.Take(most);
        return output ? PictureIn(*output, size) : nullptr;
    };
    return {Reads, decode};
}

}  // namespace ostrevin
