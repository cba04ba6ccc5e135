// The Programs source of one account: what the shell counted under the UserAssist keys of the account's hive.
//
// Facts of the format, as read: a value's name is ROT13 of a type prefix, ":" and a program or item. Its data
// is 16 bytes: at 4 the run count plus 5 (little-endian, 32 bits), at 8 the time of the last run (FILETIME,
// UTC).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"
#include "platform/TextIntake.h"

namespace ostrevin {

/// Letters moved by 13 places within A to Z and a to z; all else is kept.
[[nodiscard]] std::string Rot13(std::string text);

class UserAssistList {
  public:
    explicit UserAssistList(Platform& platform) : platform_(platform) {}

    [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }
    /// What was cut off of the texts that the machine stores, in one sentence; empty when nothing was.
    [[nodiscard]] std::string Loss() const { return intake_.Loss(); }
    /// The whole value name, decoded; "" when the index is out of range.
    [[nodiscard]] std::string UserAssistName(std::int32_t index) const;
    /// The known prefix with which the name begins, or "".
    [[nodiscard]] std::string UserAssistType(std::int32_t index) const;
    /// The program or item; "" when the index is out of range.
    [[nodiscard]] std::string UserAssistValue(std::int32_t index) const;
    /// -1 when the index is out of range.
    [[nodiscard]] std::int32_t UserAssistRunCount(std::int32_t index) const;
    /// Local date; -1.0 when the index is out of range.
    [[nodiscard]] double UserAssistLastRun(std::int32_t index) const;

    /// Whether the entry is a program that was started, and no shortcut, control panel item or the like.
    [[nodiscard]] bool IsProgram(std::int32_t index) const;

    /// Appends the entries of the account whose hive stands under HKEY_USERS as sid. Always returns false. A
    /// run count below the smallest 32-bit integer raises RuntimeError 6 (overflow) and ends the load; what
    /// was read stays.
    bool LoadUserAssist(const std::string& sid);
    /// Orders the entries by value text.
    void Sort();

  private:
    struct Entry {
        std::string name;
        std::string type;
        std::string value;
        std::int32_t runCount = 0;
        double lastRun = 0;
    };

    [[nodiscard]] const Entry* At(std::int32_t index) const;
    void LoadKey(KeyHandle key, std::uint32_t& index, std::span<std::byte> data);
    [[nodiscard]] std::string ValueOf(const std::string& name, std::string_view type);
    [[nodiscard]] std::string ExpandPrograms(const std::string& text);

    Platform& platform_;
    std::vector<Entry> entries_;
    TextIntake intake_;
    std::optional<std::string> programsFolder_;  // asked for once
};

}  // namespace ostrevin
