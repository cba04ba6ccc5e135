// A made-up machine whose accounts have something to report.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "accounts/AccountList.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {

/// 2009-08-04 15:22:18 UTC, which is the local time here.
inline constexpr std::uint64_t kSomeDay = 128938729380000000ULL;

/// People are added first, then their traces, then Load is called.
class ReportMachine {
  public:
    /// It is 2009-08-04 15:22:18. There is a folder C:\Out for what is written.
    ReportMachine();

    void AddPerson(const std::string& sid, const std::string& name);
    /// Counts a value under its name in plain text ("UEME_RUNPATH:C:\a.exe").
    void AddUserAssist(const std::string& sid, const std::string& name, std::int32_t runs,
                       std::uint64_t lastRun);
    void AddRecentDocument(const std::string& account, const std::string& target);
    /// At most 26.
    void AddOpenSave(const std::string& sid, const std::vector<std::string>& documents);
    void AddIEHistory(const std::string& account,
                      const std::vector<std::pair<std::string, std::uint64_t>>& visits);
    void AddTypedURLs(const std::string& sid, const std::vector<std::string>& urls);
    void Load();

    /// The bytes of a file; "none" when there is none.
    [[nodiscard]] std::string Read(const std::string& path);

    MemoryPlatform platform;
    AccountList accounts{
        platform, {"PERSON", [] { return std::string("PERSON"); }, [](const std::string& /*line*/) {}}};

  private:
    [[nodiscard]] MemoryKey& Hive(const std::string& sid) { return platform.Root(kUsers).Key(sid); }
};

}  // namespace ostrevin
