// The Typed URLs source of one account: the addresses typed into the browser's address bar, in their own
// order.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/TextIntake.h"

namespace ostrevin {

class TypedURLList {
  public:
    explicit TypedURLList(Platform& platform) : platform_(platform) {}

    [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(urls_.size()); }
    /// What was cut off of the texts that the machine stores, in one sentence; empty when nothing was.
    [[nodiscard]] std::string Loss() const { return intake_.Loss(); }
    /// An address; "" when the index is out of range.
    [[nodiscard]] std::string URL(std::int32_t index) const;

    /// Appends the values url1 to url25 of the account whose hive stands under HKEY_USERS as sid; missing and
    /// empty ones are passed over. Returns whether one was found.
    bool LoadTypedURL(const std::string& sid);

  private:
    Platform& platform_;
    std::vector<std::string> urls_;
    TextIntake intake_;
};

}  // namespace ostrevin
