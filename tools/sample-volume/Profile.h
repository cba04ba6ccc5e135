// What one account leaves on the machine: its hive, its Recent folder, its browser's index and its documents.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/sample-volume/Clock.h"
#include "tools/sample-volume/SampleVolume.h"

namespace ostrevin::samples {

/// A program of an account's history.
struct ProgramEntry {
    std::string_view path;
    std::uint32_t runs = 1;
    bool exists = true;
};

/// A document of an account's history. "~" at the beginning stands for the profile's folder.
struct DocumentEntry {
    enum Use : unsigned {
        kExists = 1,
        kRecent = 2,  ///< a shortcut in Recent
        kDialog = 4,  ///< chosen in the Open or Save dialog
        kAll = kExists | kRecent | kDialog,
        kGone = kRecent | kDialog,
    };
    std::string_view path;
    unsigned uses = kAll;
};

class Profile {
  public:
    /// folder: the profile's folder on the machine, such as C:\Documents and Settings\anna.
    Profile(SampleVolume& volume, std::string folder, std::uint64_t start);
    Profile(const Profile&) = delete;
    Profile& operator=(const Profile&) = delete;

    [[nodiscard]] const std::string& Folder() const { return folder_; }
    [[nodiscard]] HiveKey& Root() { return root_; }
    [[nodiscard]] HiveKey& Explorer() { return *explorer_; }
    [[nodiscard]] HiveKey& TypedUrls() {
        return root_.Key("Software\\Microsoft\\Internet Explorer\\TypedURLs");
    }
    /// The two keys of program counts: the one whose Count is read, and the one that is read itself.
    [[nodiscard]] HiveKey& Counts();
    [[nodiscard]] HiveKey& SecondCounts();
    [[nodiscard]] Clock& Time() { return clock_; }
    /// "~" replaced by the profile's folder.
    [[nodiscard]] std::string Expand(std::string_view path) const;

    // Program counts, with names as they read when decoded.
    void Ran(HiveKey& key, std::string_view name, std::uint32_t storedCount);
    void Ran(std::string_view name, std::uint32_t storedCount) { Ran(Counts(), name, storedCount); }
    void RanPrograms(std::span<const ProgramEntry> programs);

    void UsedDocuments(std::span<const DocumentEntry> documents, std::span<const std::string_view> sentences);
    /// A shortcut in Recent.
    void AddRecent(std::string_view fileName, const Link& link);
    /// A path remembered for an extension by the file dialogs, the most recent one last.
    void ChoseInDialog(const std::string& extension, const std::string& path);

    /// url1, url2, ... in this order.
    void Typed(std::span<const std::string_view> addresses);

    /// The addresses, each with this in front, visited one after the other.
    void Visited(std::string_view prefix, std::span<const std::string_view> addresses);
    [[nodiscard]] std::vector<IndexRecord>& Visits() { return visits_; }
    /// Puts the visits into an index below the profile's folder.
    void AddIndex(std::string_view path, IndexOptions options = {});

    /// Puts the hive into the volume.
    void AddHive(const HiveOptions& options);
    /// A hive that was not written out: without what change takes away, and complete with its log.
    template <typename Change>
    void AddDirtyHive(const HiveOptions& options, Change change) {
        WriteDialogs();
        HiveKey before = root_;
        change(before);
        AddHiveFile({root_, options, before});
    }

    /// Adds the registry's folder tables and the environment.
    static void AddShellFolders(HiveKey& root, const std::string& folder);

  private:
    void WriteDialogs();
    void AddHiveFile(HiveFile hive);

    SampleVolume& volume_;
    std::string folder_;
    Clock clock_;
    HiveKey root_;
    HiveKey* explorer_;
    std::map<std::string, std::vector<std::string>> dialogs_;
    std::vector<IndexRecord> visits_;
};

inline constexpr std::string_view kFirstUserAssist =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\{75048700-EF1F-11D0-9888-"
    "006097DEACF9}";
inline constexpr std::string_view kSecondUserAssist =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\{5E6AB780-7743-11CF-A12B-"
    "00AA004AE837}";
inline constexpr std::string_view kOpenSaveMru =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU";

/// Latin letters moved by thirteen places, as the shell writes the names of its counts.
std::string Rot13(std::string_view text);
/// The data of a count.
std::vector<std::byte> CountData(std::uint32_t storedCount, std::uint64_t lastRun);

/// A shortcut to a local file or folder, as the shell makes it for a document.
Link LinkTo(std::string_view path, std::uint32_t size, std::uint64_t opened);

}  // namespace ostrevin::samples
