#include <array>

#include "tools/sample-volume/Machine.h"
#include "tools/sample-volume/People.h"
#include "tools/sample-volume/Profile.h"

namespace ostrevin::samples {
namespace {

using Use = DocumentEntry::Use;

constexpr auto kPrograms = std::to_array<ProgramEntry>({
    {"C:\\WINDOWS\\system32\\cmd.exe", 311},
    {"C:\\WINDOWS\\system32\\mmc.exe", 147},
    {"C:\\WINDOWS\\system32\\mstsc.exe", 92},
    {"C:\\WINDOWS\\regedit.exe", 35},
    {"C:\\WINDOWS\\system32\\perfmon.exe", 8},
    {"C:\\WINDOWS\\system32\\taskmgr.exe", 26},
    {"C:\\WINDOWS\\system32\\notepad.exe", 180},
    {"C:\\Program Files\\Cable Map\\cablemap.exe", 19},
    {"C:\\Program Files\\Night Backup\\nbadmin.exe", 54},
    {"C:\\Program Files\\Night Backup\\nbrestore.exe", 3},
    {"C:\\Program Files\\Internet Explorer\\IEXPLORE.EXE", 66},
    {"\\\\FILESRV\\install\\service packs\\xpsp3.exe", 1, false},
    {"\\\\FILESRV\\install\\printers\\setup.exe", 2, false},
    {"~\\Desktop\\disk-check.exe", 4, false},
});

constexpr auto kDocuments = std::to_array<DocumentEntry>({
    {"~\\My Documents\\network plan.png"},
    {"~\\My Documents\\network plan old.bmp", Use::kGone},
    {"~\\My Documents\\inventory.csv"},
    {"~\\My Documents\\backup log 2009-11.txt"},
    {"~\\My Documents\\backup log 2009-10.txt"},
    {"~\\My Documents\\rules for visitors.rtf"},
    {"~\\My Documents\\server room.jpg"},
    {"~\\My Documents\\printer queue.htm", Use::kExists | Use::kDialog},
    {"C:\\boot.ini", Use::kRecent},
    {"~\\My Documents\\licences.csv", Use::kGone},
});

constexpr auto kSentences = std::to_array<std::string_view>({
    "Full backup finished at 03:12, verified, tape 4 changed.",
    "KONTOR-7 was restarted after the power failure; one profile needed its log.",
    "Visitors get an account for one day and no access to the file server.",
    "The switch on the second floor hums again.",
    "Two licences are left; order five more before January.",
    "Printer queue stuck on Monday, cleared by Felix.",
    "Cable 14 runs behind the shelf, not below the floor.",
});

constexpr auto kTyped = std::to_array<std::string_view>({
    "http://intranet.example.com/tickets",
    "http://switch-2.example.com/ports",
    "http://updates.example.com/",
    "http://10.0.7.1/status",
});

constexpr auto kCookies = std::to_array<std::string_view>({
    "intranet.example.com/",
    "intranet.example.com/tickets",
    "switch-2.example.com/",
    "updates.example.com/",
    "search.example.com/",
    "hardware.example.net/shop",
    "news.example.com/",
    "maps.example.net/",
});

}  // namespace

void AddKeller(SampleVolume& volume) {
    // The profile's folder is spelled as the account was when he first came.
    Profile profile(volume, "C:\\Documents and Settings\\M.Keller", FileTimeOf({2009, 11, 16, 6, 20, 0}));
    profile.Explorer().SetString("Logon User Name", "m.keller");
    profile.Ran("UEME_CTLCUACount:ctor", 7);
    profile.RanPrograms(kPrograms);
    profile.Ran("UEME_RUNCPL:\"C:\\WINDOWS\\system32\\ncpa.cpl\",Network Connections", 23);
    profile.UsedDocuments(kDocuments, kSentences);
    profile.Typed(kTyped);
    // All that is left of his browsing.
    profile.Visited("Cookie:m.keller@", kCookies);
    profile.AddIndex("~\\Cookies\\index.dat");

    HiveOptions hive;
    hive.minorVersion = 3;
    hive.leaf = SubKeyLeaf::Li;
    hive.leafElements = 4;
    hive.lastWritten = LastShutdown() - kDay;
    hive.primarySequence = hive.secondarySequence = 903;
    profile.AddHive(hive);
}

}  // namespace ostrevin::samples
