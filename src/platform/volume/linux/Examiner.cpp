#include "platform/volume/Examiner.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <langinfo.h>
#include <locale.h>
#include <memory>
#include <optional>
#include <pwd.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/Dates.h"
#include "platform/volume/CharsetDecoder.h"
#include "platform/volume/VolumeFiles.h"

namespace ostrevin {
namespace {

constexpr int kNowhere = -1;  // in place of a file descriptor

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

/// The locale in force for times, by the order in which the environment names it.
std::string TimeLocaleName() {
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"}) {
        std::string value = Environment(name);
        if (!value.empty()) {
            return value;
        }
    }
    return "C";
}

bool IsPlainLocale(std::string_view name) {
    return name == "C" || name == "POSIX" || name.starts_with("C.");
}

/// The formats of the locale; those of the plain locale, month/day/year, stand in DateFormats itself.
DateFormats FormatsOfLocale() {
    const std::string name = TimeLocaleName();
    DateFormats formats;
    if (IsPlainLocale(name)) {
        return formats;
    }
    const std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)> locale(
        newlocale(LC_TIME_MASK | LC_CTYPE_MASK, name.c_str(), nullptr), &freelocale);
    if (!locale) {
        return formats;
    }
    const CharsetDecoder decoder(std::string(nl_langinfo_l(CODESET, locale.get())));
    const auto text = [&](nl_item item) { return decoder.Decode(nl_langinfo_l(item, locale.get())); };
    formats.date = text(D_FMT);
    formats.time = text(T_FMT);
    formats.timeOfHalfDay = text(T_FMT_AMPM);
    formats.am = text(AM_STR);
    formats.pm = text(PM_STR);
    return formats;
}

std::tm LocalTime(std::time_t time) {
    std::tm local{};
    localtime_r(&time, &local);
    return local;
}

std::string ExecutableFolder() {
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    std::string folder = executable.parent_path().string();
    return folder.ends_with('/') ? folder : folder + "/";
}

/// The user's folder for settings, which the environment may name; empty when the user has no home.
std::string SettingsFolder() {
    std::string named = Environment("XDG_CONFIG_HOME");
    if (named.starts_with('/')) {
        return named;
    }
    std::string home = Environment("HOME");
    if (home.empty()) {
        const passwd* user = getpwuid(getuid());
        home = user == nullptr ? "" : user->pw_dir;
    }
    return home.starts_with('/') ? home + "/.config" : std::string();
}

/// The folder itself, or the first one above it that is there.
std::string NearestFolder(std::filesystem::path folder) {
    std::error_code error;
    while (!std::filesystem::exists(folder, error) && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    return folder.string();
}

/// A program that the environment's PATH has, running with no input and with its messages thrown away.
/// Its output goes to a descriptor, or kNowhere. None when it cannot start.
std::optional<pid_t> Start(const std::vector<std::string>& command, int output) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    }
    if (output != kNowhere) {
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    }
    pid_t process = 0;
    const int error = posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? std::optional(process) : std::nullopt;
}

/// What a program, run to its end, writes to its output.
std::string OutputOf(const std::vector<std::string>& command) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return {};
    }
    const std::optional<pid_t> process = Start(command, ends[1]);
    close(ends[1]);
    std::string output;
    std::array<char, 256> block{};
    for (ssize_t count = 0; (count = read(ends[0], block.data(), block.size())) > 0;) {
        output.append(block.data(), static_cast<std::size_t>(count));
    }
    close(ends[0]);
    if (process) {
        waitpid(*process, nullptr, 0);
    }
    return output;
}

}  // namespace

Examiner::Examiner() : Examiner(ExecutableFolder()) {}

Examiner::Examiner(std::string programFolder)
    : programFolder_(std::move(programFolder)), dates_(FormatsOfLocale()) {}

double Examiner::Now() const {
    const std::tm local = LocalTime(std::time(nullptr));
    return DateFromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                          std::min(local.tm_sec, 59), 0});
}

std::int32_t Examiner::UtcBias() const {
    return static_cast<std::int32_t>(-LocalTime(std::time(nullptr)).tm_gmtoff / 60);
}

std::string Examiner::ApplicationFolder(const VolumeFiles& evidence) const {
    const std::string settings = SettingsFolder();
    const bool writable = faccessat(AT_FDCWD, programFolder_.c_str(), W_OK, AT_EACCESS) == 0;
    if ((settings.empty() || writable) && evidence.IsOutside(programFolder_)) {
        return programFolder_;
    }
    std::string folder = settings + "/ostrevin/";
    if (settings.empty() || !evidence.IsOutside(NearestFolder(folder))) {
        return {};
    }
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return folder;
}

std::string Examiner::ResolvedPath(const std::string& hostPath) const {
    const std::unique_ptr<char, decltype(&std::free)> path(realpath(hostPath.c_str(), nullptr), &std::free);
    return path ? std::string(path.get()) : std::string();
}

bool Examiner::Open(const std::string& item) {
    ForgetEndedOpeners();
    const std::optional<pid_t> process = Start({"xdg-open", item}, kNowhere);
    if (process) {
        openers_.push_back(*process);
    }
    return process.has_value();
}

bool Examiner::HasHelpViewer() {
    // The media type of such files, and the one that older viewers name.
    constexpr std::array kTypes = {"application/vnd.ms-htmlhelp", "application/x-chm"};
    return std::any_of(kTypes.begin(), kTypes.end(), [](const char* type) {
        return OutputOf({"xdg-mime", "query", "default", type}).find(".desktop") != std::string::npos;
    });
}

void Examiner::ForgetEndedOpeners() {
    std::erase_if(openers_, [](std::int64_t process) {
        return waitpid(static_cast<pid_t>(process), nullptr, WNOHANG) != 0;
    });
}

}  // namespace ostrevin
