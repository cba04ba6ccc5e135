// The Opened/Saved Documents source of one account: the paths that the common file dialogs remembered.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/TextIntake.h"

namespace ostrevin {

class OpenSaveList {
  public:
    explicit OpenSaveList(Platform& platform) : platform_(platform) {}

    [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }
    /// What was cut off of the texts that the machine stores, in one sentence; empty when nothing was.
    [[nodiscard]] std::string Loss() const { return intake_.Loss(); }
    /// A remembered path; "" when the index is out of range.
    [[nodiscard]] std::string Document(std::int32_t index) const;

    /// Appends the entries of the account whose hive stands under HKEY_USERS as sid, kind by kind; the kind
    /// "*", which holds all others' documents once more, is left out. A value that cannot be read leaves what
    /// was read before it in its place. Returns whether the list of kinds could be read.
    bool LoadOpenSaveList(const std::string& sid);
    /// Orders the entries by path.
    void Sort();

  private:
    struct Entry {
        std::string document;
    };

    Platform& platform_;
    std::vector<Entry> entries_;
    TextIntake intake_;
};

}  // namespace ostrevin
