// The IE History source of one account: addresses and access times out of a browser cache index
// ("index.dat").
//
// The file as read (little-endian): a signature ended by a zero byte, 4 bytes not used, then the offset H at
// which the scan starts. A record begins with "URL " or "LEAK"; its time of last access (FILETIME, UTC)
// stands at its byte 16 and its address, ended by a zero byte, always at its byte 104. Bytes behind the end
// of the file count as zeros, and so do those from 2 GiB on, which no offset of the format reaches.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/TextIntake.h"

namespace ostrevin {

class IEHistoryList {
  public:
    /// An address is cut to so many characters; the browser itself keeps none of more than a few thousand.
    static constexpr std::uint32_t kLongestAddress = 1U << 20U;

    IEHistoryList(Platform& platform, std::string loggedOnUserName)
        : platform_(platform), loggedOnUserName_(std::move(loggedOnUserName)) {}

    [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }
    /// What was cut off of the texts that the machine stores, in one sentence; empty when nothing was.
    [[nodiscard]] std::string Loss() const { return intake_.Loss(); }
    /// What follows the first "@" of the address, or all of it; "" when the index is out of range.
    [[nodiscard]] std::string URL(std::int32_t index) const;
    /// Local date; 1601-01-01 when the index is out of range.
    [[nodiscard]] double DateAccessed(std::int32_t index) const;

    /// Appends the records of one index file of the account: of its History folder, else of History.IE5, else
    /// of Content.IE5, else of Cookies; never of two. Returns whether there was one to read.
    bool LoadIEHistory(const std::string& accountName);
    /// Orders the entries by address.
    void Sort();

  private:
    struct Entry {
        std::string url;
        double dateAccessed = 0;
    };

    [[nodiscard]] std::optional<std::string> IndexFile(const std::string& accountName) const;
    void Scan(InputFile& file);

    Platform& platform_;
    std::string loggedOnUserName_;
    std::vector<Entry> entries_;
    TextIntake intake_{kLongestAddress, TextIntake::kUnbounded};
};

}  // namespace ostrevin
