// Examining a volume leaves it as it was.
#include <windows.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>

#include "tests/volume/Examination.h"
#include "tests/volume/TemporaryFolder.h"
#include "tools/sample-volume/SampleVolume.h"

namespace ostrevin {
namespace {

namespace fs = std::filesystem;

/// Without the time of the last access: not every host of these tests lets a program leave that as it is.
struct State {
    std::uint64_t created = 0;
    std::uint64_t written = 0;
    DWORD attributes = 0;
    std::string bytes;
    bool operator==(const State&) const = default;
};

std::uint64_t Units(const FILETIME& time) {
    return (std::uint64_t{time.dwHighDateTime} << 32U) | time.dwLowDateTime;
}

State StateOf(const fs::path& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    EXPECT_NE(GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data), 0) << path;
    State state{Units(data.ftCreationTime), Units(data.ftLastWriteTime), data.dwFileAttributes, {}};
    if (fs::is_regular_file(path)) {
        const std::u8string name = path.u8string();
        state.bytes = BytesOfFile({name.begin(), name.end()});
    }
    return state;
}

std::map<fs::path, State> StatesOf(const fs::path& folder) {
    std::map<fs::path, State> states = {{folder, StateOf(folder)}};
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        states[entry.path()] = StateOf(entry.path());
    }
    return states;
}

TEST(Evidence, NotAByteNorATimeChanges) {
    const TemporaryFolder folder;
    samples::WriteVolume(samples::MakeSampleVolume({}), folder.Path());
    const std::map<fs::path, State> before = StatesOf(folder.Path());
    {
        const auto platform = VolumePlatform::Open(folder.Utf8Path(), {});
        EXPECT_GT(Examine(*platform, folder.Utf8Path()), 200U);
    }
    std::map<fs::path, State> after = StatesOf(folder.Path());
    EXPECT_EQ(after.size(), before.size());
    for (const auto& [path, state] : before) {
        EXPECT_TRUE(after[path] == state) << path;
    }
}

}  // namespace
}  // namespace ostrevin
