#include "tests/samples/Oracle.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

std::string Quoted(const std::string& argument) {
    std::string quoted = "'";
    for (const char c : argument) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    return quoted + "'";
}

std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

bool IsInstalled(const std::string& program) {
    const char* const path = ::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        folder += '/';
        folder += program;
        if (::access(folder.c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

std::vector<std::string> LinesOf(const std::vector<std::string>& command, const std::string& input) {
    const TestFile in(std::as_bytes(std::span(input)));
    std::string line = "LC_ALL=C.UTF-8";
    for (const std::string& word : command) {
        line += ' ';
        line += Quoted(word);
    }
    line += " 2>/dev/null <";
    line += Quoted(in.Path());
    FILE* const pipe = ::popen(line.c_str(), "r");
    if (pipe == nullptr) {
        ADD_FAILURE() << "cannot run " << command.front();
        return {};
    }
    std::string output;
    std::array<char, 65536> buffer{};
    for (std::size_t size = 0; (size = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        output.append(buffer.data(), size);
    }
    const int status = ::pclose(pipe);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << line << "\n" << output.substr(0, 2000);
    return Split(output);
}

std::vector<std::string> After(const std::vector<std::string>& lines, std::string_view prefix) {
    std::vector<std::string> found;
    for (const std::string& line : lines) {
        if (line.starts_with(prefix)) {
            const std::size_t begin = line.find_first_not_of(" \t", prefix.size());
            found.push_back(begin == std::string::npos ? "" : line.substr(begin));
        }
    }
    return found;
}

void ExpectSameLines(const std::vector<std::string>& said, const std::vector<std::string>& expected) {
    EXPECT_EQ(said.size(), expected.size());
    const auto [one, other] = std::mismatch(said.begin(), said.end(), expected.begin(), expected.end());
    if (one != said.end() || other != expected.end()) {
        ADD_FAILURE() << "line " << one - said.begin()
                      << "\nsaid:     " << (one != said.end() ? one->substr(0, 500) : "(no more)")
                      << "\nexpected: " << (other != expected.end() ? other->substr(0, 500) : "(no more)");
    }
}

std::string TimeText(std::uint64_t fileTime, const char* pattern) {
    constexpr std::int64_t kUnixEpoch = 11644473600;
    const auto seconds = static_cast<std::time_t>(static_cast<std::int64_t>(fileTime / kSecond) - kUnixEpoch);
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    std::ostringstream text;
    text << std::put_time(&parts, pattern);
    return text.str();
}

TestFile::TestFile(std::span<const std::byte> bytes) {
    static std::atomic<unsigned> count{0};
    path_ = std::filesystem::path(::testing::TempDir()) /
            ("ostrevin-" + std::to_string(::getpid()) + "-" + std::to_string(count++));
    std::ofstream out(path_, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    EXPECT_TRUE(out.good()) << "cannot write " << path_;
}

TestFile::~TestFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

}  // namespace ostrevin::samples
