// What hostile volumes cost, in calls of the system and bytes of memory, which are counted here.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/volume/VolumePlatform.h"
#include "startup/ReportCommand.h"
#include "tests/volume/TestVolume.h"

namespace {

std::atomic<std::size_t> entriesNamed = 0;
std::atomic<std::size_t> foldersRead = 0;
std::atomic<std::size_t> bytesAllocated = 0;
/// An allocation of more bytes than these fails.
std::atomic<std::size_t> largestAllocation = std::numeric_limits<std::size_t>::max();

void* Allocate(std::size_t size) {
    bytesAllocated += size;
    void* memory = size > largestAllocation ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

int OpenCounted(int folder, const char* name, int flags) {
    if ((flags & O_PATH) != 0) {
        ++entriesNamed;
    } else if (std::string_view(name) == ".") {
        ++foldersRead;
    }
    return static_cast<int>(syscall(SYS_openat, folder, name, flags, 0));
}

}  // namespace

// The program's own calls end here instead of in the library.
void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*nothrow*/) noexcept {
    try {
        return Allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*nothrow*/) noexcept {
    std::free(memory);
}
extern "C" {
int openat(int folder, const char* name, int flags, ...);   // NOLINT(readability-redundant-declaration)
int openat(int folder, const char* name, int flags, ...) {  // NOLINT(cert-dcl50-cpp)
    return OpenCounted(folder, name, flags);
}
int __openat_2(int folder, const char* name, int flags);   // NOLINT(bugprone-reserved-identifier)
int __openat_2(int folder, const char* name, int flags) {  // NOLINT(bugprone-reserved-identifier)
    return OpenCounted(folder, name, flags);
}
}

namespace ostrevin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class CostTest : public testing::Test {
  protected:
    ~CostTest() override { largestAllocation = std::numeric_limits<std::size_t>::max(); }
    static void Count() {
        entriesNamed = 0;
        foldersRead = 0;
        bytesAllocated = 0;
    }
    TestVolume volume_;
};

std::string Numbered(const std::string& name, int number) {
    return name + std::to_string(number);
}

TEST_F(CostTest, AFolderIsReadOnceForManyNames) {
    constexpr int kFiles = 2000;
    volume_.Write();
    for (int i = 0; i < kFiles; ++i) {
        volume_.folder.Write(Numbered("Letters/LETTER", i), "");
    }
    const auto platform = volume_.Open();
    Count();
    for (int i = 0; i < kFiles; ++i) {
        ASSERT_TRUE(platform->PathFileExistsA(Numbered("C:\\letters\\Letter", i)));
        ASSERT_FALSE(platform->PathFileExistsA(Numbered("C:\\letters\\None", i)));
    }
    EXPECT_GE(foldersRead, 2U);
    EXPECT_LE(foldersRead, 4U) << "the root and the folder";

    volume_.folder.Write("Letters/NEW", "");
    EXPECT_TRUE(platform->PathFileExistsA("C:\\letters\\new")) << "what appears is found";
    std::filesystem::remove(volume_.folder / "Letters/LETTER7");
    EXPECT_FALSE(platform->PathFileExistsA("C:\\letters\\Letter7")) << "what vanishes is not";
    EXPECT_LE(foldersRead, 6U);
}

TEST_F(CostTest, AChainOfLinksEndsSoon) {
    volume_.Write();
    volume_.folder.Write("x/target.txt", "");
    std::string detour;
    while (detour.size() < 3900) {
        detour += "x/../";
    }
    for (int i = 0; i < 39; ++i) {
        volume_.folder.MakeLink(Numbered("l", i), detour + Numbered("l", i + 1));
        volume_.folder.MakeLink(Numbered("s", i), Numbered("s", i + 1));
    }
    volume_.folder.MakeLink("l39", "x");
    volume_.folder.MakeLink("s39", "x");
    const auto platform = volume_.Open();
    Count();
    EXPECT_FALSE(platform->PathFileExistsA("C:\\l0\\target.txt"));
    EXPECT_LE(entriesNamed, 1000U);
    EXPECT_TRUE(platform->PathFileExistsA("C:\\s0\\target.txt"))
        << "40 links of ordinary length are followed";
}

TEST_F(CostTest, AccountsAreLoadedWithoutLookingAtEachOther) {
    constexpr int kAccounts = 200;
    for (int i = 0; i < kAccounts; ++i) {
        volume_.AddUser(Numbered("S-1-5-21-9-9-9-", 2000 + i), Numbered("u", i), 100);
    }
    volume_.Write();
    const auto platform = volume_.Open();
    Count();
    for (int i = 0; i < kAccounts; ++i) {
        ASSERT_EQ(platform->RegLoadKeyA(kUsers, Numbered("S-1-5-21-9-9-9-", 2000 + i),
                                        "C:\\Documents and Settings\\" + Numbered("u", i) + "\\NTUSER.DAT"),
                  kSuccess);
    }
    EXPECT_LE(entriesNamed, kAccounts * 40U);
    Count();
    KeyHandle key = 0;
    for (int i = 0; i < kAccounts; ++i) {
        ASSERT_EQ(platform->RegOpenKeyExA(kUsers, Numbered("s-1-5-21-9-9-9-", 2000 + i), 1, key), kSuccess);
    }
    EXPECT_LE(bytesAllocated, kAccounts * 2000U);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "again", "C:\\Documents and Settings\\u7\\NTUSER.DAT"),
              kSharingViolation);
}

TEST_F(CostTest, TheEnvironmentIsNotLargerThanThatOfWindows) {
    samples::HiveKey& environment = volume_.Control().Key("Session Manager\\Environment");
    environment.SetString("A", std::string(8000, 'a'));
    for (int i = 0; i < 3000; ++i) {
        environment.SetString(Numbered("V", i), "%A%%A%%A%", 2);
    }
    environment.SetString("Z", "last");
    const auto platform = volume_.Make();
    EXPECT_EQ(platform->EnvironmentVariable("V0"), std::string(24'000, 'a'));
    EXPECT_EQ(platform->EnvironmentVariable("V1"), "");
    EXPECT_EQ(platform->EnvironmentVariable("Z"), "last");
    EXPECT_THAT(volume_.notices, Contains(HasSubstr("Environment: There are more variables than")));
}

TEST_F(CostTest, ASpecialFolderIsNoLongerThanTheShellTells) {
    volume_.software.Key("Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders")
        .SetString("Common Programs", "C:\\" + std::string(256, 'p'));
    EXPECT_EQ(volume_.Make()->SpecialFolderPath(23), "C:\\" + std::string(256, 'p'));
    volume_.software.Key("Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders")
        .SetString("Common Programs", "C:\\" + std::string(257, 'p'));
    EXPECT_EQ(volume_.Make()->SpecialFolderPath(23), "");
}

TEST_F(CostTest, ANameLongerThanAnyIsCutAndTold) {
    volume_.AddUser("S-1-5-21-1000-2000-3000-1005", "long", 1);
    volume_.AddLocalAccount(1005, std::string(300, 'n'));
    const std::vector<std::string> sids = {"S-1-5-21-1000-2000-3000-1005"};
    EXPECT_THAT(volume_.Make()->UserAccountNames(sids), ElementsAre(ElementsAre(std::string(256, 'n'))));
    EXPECT_THAT(volume_.notices, Contains(HasSubstr("The account's name is longer than any")));
}

TEST_F(CostTest, WhatDoesNotFitIntoMemoryCostsItsAccountAlone) {
    constexpr std::size_t kMegabyte = std::size_t{1} << 20U;
    for (TestVolume::User& user : volume_.users) {
        user.hive.Key("Software\\Microsoft\\Internet Explorer\\TypedURLs")
            .SetString("url1", "http://" + user.folder + "/");
        if (user.folder == "bob") {
            user.hive.Key("Software\\Microsoft\\Internet Explorer\\TypedURLs")
                .SetString("url2", std::string(4 * kMegabyte, 'x'));
        }
    }
    volume_.Write();
    std::vector<std::string> lines;
    const auto open = [&](const std::string& folder) -> std::unique_ptr<Platform> {
        return VolumePlatform::Open(folder, [&](const std::string& line) { lines.push_back(line); });
    };
    std::ostringstream output;
    std::ostringstream errors;
    largestAllocation = 3 * kMegabyte;
    const int code = RunReport({"--format", "jsonl", volume_.folder.Utf8Path()}, {open, {}}, output, errors);
    largestAllocation = std::numeric_limits<std::size_t>::max();
    EXPECT_EQ(code, kReportCannot);
    EXPECT_THAT(output.str(), HasSubstr("http://anna/"));
    EXPECT_THAT(output.str(), HasSubstr("http://carol.CORP/")) << "an account behind it";
    lines.push_back(errors.str());
    EXPECT_THAT(lines, Contains(HasSubstr("bob"))) << "is told";
    EXPECT_THAT(lines, Contains(HasSubstr("There is not enough memory")));
}

}  // namespace
}  // namespace ostrevin
