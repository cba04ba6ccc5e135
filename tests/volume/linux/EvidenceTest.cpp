// Examining a volume leaves it as it was.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <sys/stat.h>

#include "tests/volume/Examination.h"
#include "tests/volume/TemporaryFolder.h"
#include "tools/sample-volume/SampleVolume.h"

namespace ostrevin {
namespace {

struct State {
    std::vector<std::int64_t> numbers;  // rights, owner, size, links and time stamps
    std::string bytes;
    bool operator==(const State&) const = default;
};

std::vector<std::int64_t> NumbersOf(const std::filesystem::path& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return {status.st_mode,
            status.st_uid,
            static_cast<std::int64_t>(status.st_ino),
            status.st_size,
            status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec,
            status.st_ctim.tv_sec,
            status.st_ctim.tv_nsec,
            status.st_atim.tv_sec,
            status.st_atim.tv_nsec,
            static_cast<std::int64_t>(status.st_nlink)};
}

std::map<std::string, State> StateOf(const std::filesystem::path& folder) {
    std::map<std::string, State> states;
    std::vector<std::filesystem::path> paths = {folder};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        paths.push_back(entry.path());
    }
    for (const std::filesystem::path& path : paths) {
        State& state = states[path.string()];
        if (std::filesystem::is_regular_file(path)) {
            state.bytes = BytesOfFile(path.string());
        }
    }
    return states;
}

/// As StateOf, with times of the last access that any reading would change, since they lie long back.
std::map<std::string, State> SettledStateOf(const std::filesystem::path& folder) {
    std::map<std::string, State> states = StateOf(folder);
    for (auto& [path, state] : states) {
        const timespec times[] = {{1000000000, 0}, {1200000000, 0}};
        EXPECT_EQ(utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW), 0) << path;
    }
    for (auto& [path, state] : states) {
        state.numbers = NumbersOf(path);
    }
    return states;
}

TEST(Evidence, NotAByteNorATimeChanges) {
    const TemporaryFolder folder;
    samples::WriteVolume(samples::MakeSampleVolume({}), folder.Path());
    const std::map<std::string, State> before = SettledStateOf(folder.Path());
    std::size_t entries = 0;
    {
        const auto platform = VolumePlatform::Open(folder.Path().string(), {});
        entries = Examine(*platform, folder.Path().string());
        platform->ShellExecuteA("open", "C:\\boot.ini", "C:\\", 1);
    }
    EXPECT_GT(entries, 200U);
    std::map<std::string, std::vector<std::int64_t>> numbers;
    for (const auto& [path, state] : before) {
        numbers[path] = NumbersOf(path);
    }
    std::map<std::string, State> after = StateOf(folder.Path());
    EXPECT_EQ(after.size(), before.size());
    for (auto& [path, state] : after) {
        state.numbers = numbers[path];
        const auto was = before.find(path);
        ASSERT_TRUE(was != before.end()) << path;
        EXPECT_EQ(state.numbers, was->second.numbers) << path;
        EXPECT_TRUE(state.bytes == was->second.bytes) << path;
    }
}

}  // namespace
}  // namespace ostrevin
