// Runs independent readers of the formats, so that files can be held against what they say.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrevin::samples {

bool IsInstalled(const std::string& program);

/// What a program writes to standard output, as lines; the arguments need no quoting. A program that fails
/// fails the test.
std::vector<std::string> LinesOf(const std::vector<std::string>& command, const std::string& input = "");

/// The rest of every line that begins with the prefix, without leading blanks and tabs.
std::vector<std::string> After(const std::vector<std::string>& lines, std::string_view prefix);

/// Fails the test at the first line that differs.
void ExpectSameLines(const std::vector<std::string>& said, const std::vector<std::string>& expected);

/// A FILETIME, in whole seconds of UTC, by a pattern of std::put_time.
std::string TimeText(std::uint64_t fileTime, const char* pattern);

/// A file of a test's own, removed with the object.
class TestFile {
  public:
    explicit TestFile(std::span<const std::byte> bytes);
    ~TestFile();
    TestFile(const TestFile&) = delete;
    TestFile& operator=(const TestFile&) = delete;
    [[nodiscard]] std::string Path() const { return path_.string(); }

  private:
    std::filesystem::path path_;
};

}  // namespace ostrevin::samples

/// Ends the test as skipped where the reader is not installed; the message names it and its package.
#define OSTREVIN_NEED(program, package)                                                        \
    if (!ostrevin::samples::IsInstalled(program)) {                                            \
        GTEST_SKIP() << (program) << " is not installed (Debian package " << (package) << ")"; \
    }
