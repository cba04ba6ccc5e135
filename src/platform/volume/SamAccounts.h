// The local accounts of a machine, as its security accounts manager keeps them (the SAM hive).
//
// Facts known from public descriptions of the format: below SAM\Domains\Account, the value "V" ends with the
// machine's security identifier, and Users\RRRRRRRR (the relative identifier in eight hexadecimal digits) has
// a value "V" whose table tells where in it the account's name stands.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ostrevin {

class VolumeRegistry;

class SamAccounts {
  public:
    explicit SamAccounts(VolumeRegistry& registry) : registry_(registry) {}

    /// The machine's security identifier in text form ("S-1-5-21-1-2-3"); empty when it is not known.
    [[nodiscard]] const std::string& MachineSid();
    /// The name of the account with this relative identifier; none when there is no such account.
    [[nodiscard]] std::optional<std::string> NameOf(std::uint32_t relativeId) const;

  private:
    [[nodiscard]] std::string ReadMachineSid() const;

    VolumeRegistry& registry_;
    std::optional<std::string> machineSid_;
};

}  // namespace ostrevin
