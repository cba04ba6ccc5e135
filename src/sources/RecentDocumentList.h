// The Recent Documents source of one account: the files of its Recent folder and what each shortcut points
// to.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin {

class RecentDocumentList {
  public:
    explicit RecentDocumentList(Platform& platform) : platform_(platform) {}

    [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }
    /// The shortcut's file name; "" when the index is out of range.
    [[nodiscard]] std::string RecentDocument(std::int32_t index) const;
    /// The path that the shortcut points to; "" when the index is out of range.
    [[nodiscard]] std::string RecentDocumentPath(std::int32_t index) const;

    /// Appends every ordinary file of a folder, shortcut or not: one that cannot be read as a shortcut gets
    /// the path of the file before it. Returns whether the folder lists a file.
    bool LoadRecentDocuments(const std::string& folder);
    /// Orders the entries by path.
    void Sort();

  private:
    struct Entry {
        std::string file;
        std::string path;
    };

    Platform& platform_;
    std::vector<Entry> entries_;
};

}  // namespace ostrevin
