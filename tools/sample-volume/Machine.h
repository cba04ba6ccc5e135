// The machine itself: its identity, its configuration hives and its common files.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/sample-volume/SampleVolume.h"

namespace ostrevin::samples {

inline constexpr std::string_view kMachineName = "KONTOR-7";
inline constexpr std::string_view kMachineSid = "S-1-5-21-2846120477-1153294310-3029457816";
/// The domain of the one account that is not the machine's own.
inline constexpr std::string_view kDomainName = "NORDHAFEN";
inline constexpr std::string_view kDomainSid = "S-1-5-21-3120774415-2290018856-1486093327";

struct Account {
    std::string name;  ///< UTF-8
    std::string fullName;
    std::string comment;
    std::uint32_t rid = 0;
    std::uint64_t lastLogon = 0;
    std::uint16_t logons = 0;
    bool disabled = false;
};

/// A person's account, or none when the SAM does not know it.
std::string SidOf(std::string_view authority, std::uint32_t rid);

/// The identifier's binary form.
std::vector<std::byte> SidBytes(std::string_view sid);

/// The machine's own accounts, the plain ones last.
std::vector<Account> MachineAccounts(unsigned plainAccounts);

/// A plain account's name, number 0 and up.
std::string PlainName(unsigned number);

inline constexpr std::uint32_t kAnnaRid = 1003;
inline constexpr std::uint32_t kFelixRid = 1004;
inline constexpr std::uint32_t kSvetlanaRid = 1005;
inline constexpr std::uint32_t kKellerRid = 1131;  // in the domain
inline constexpr std::uint32_t kFirstPlainRid = 2000;

/// When the machine was last shut down, as a FILETIME.
std::uint64_t LastShutdown();

/// The hives under system32\config, the service profiles, the plain profiles and the machine's files.
void AddMachine(SampleVolume& volume, const SampleOptions& options);

/// The accounts' hive (SAM).
HiveKey AccountDatabase(const std::vector<Account>& accounts);

}  // namespace ostrevin::samples
