#include <array>

#include "tools/sample-volume/Machine.h"
#include "tools/sample-volume/People.h"
#include "tools/sample-volume/Profile.h"

namespace ostrevin::samples {
namespace {

using Use = DocumentEntry::Use;

constexpr auto kPrograms = std::to_array<ProgramEntry>({
    {"C:\\Program Files\\Internet Explorer\\IEXPLORE.EXE", 640},
    {"C:\\Program Files\\Plotter 2D\\plotter.exe", 44},
    {"C:\\Program Files\\Hexagon Chess\\hexchess.exe", 127},
    {"C:\\Program Files\\Tiny Compiler\\bin\\tcedit.exe", 59},
    {"C:\\WINDOWS\\system32\\cmd.exe", 88},
});

// Read from the second key itself, as far as there are more of them than the first one counts.
constexpr auto kDirect = std::to_array<std::string_view>({
    "UEME_UITOOLBAR:0x1,100",
    "UEME_UITOOLBAR:0x1,101",
    "UEME_UITOOLBAR:0x1,102",
    "UEME_UITOOLBAR:0x1,103",
    "UEME_UITOOLBAR:0x1,104",
    "UEME_UITOOLBAR:0x1,105",
    "UEME_UITOOLBAR:0x1,106",
    "UEME_UITOOLBAR:0x1,107",
    "UEME_RUNPATH:C:\\Program Files\\Plotter 2D\\plotter-help.exe",
    "UEME_RUNPATH:C:\\Program Files\\Hexagon Chess\\network.exe",
    "UEME_RUNPIDL:%csidl2%\\Accessories\\Paint.lnk",
    "UEME_UISCUT",
    "UEME_RUNPATH:C:\\WINDOWS\\system32\\mspaint.exe",
    "UEME_RUNPATH:D:\\Lectures\\player.exe",
});

constexpr auto kDocuments = std::to_array<DocumentEntry>({
    {"~\\My Documents\\Thesis\\chapter 1.doc"},
    {"~\\My Documents\\Thesis\\chapter 2.doc"},
    {"~\\My Documents\\Thesis\\chapter 3 - experiments.doc"},
    {"~\\My Documents\\Thesis\\outline.rtf"},
    {"~\\My Documents\\Thesis\\figure 1.png"},
    {"~\\My Documents\\Thesis\\figure 2.png"},
    {"~\\My Documents\\Thesis\\figure 3.bmp", Use::kGone},
    {"~\\My Documents\\Thesis\\series A.csv"},
    {"~\\My Documents\\Thesis\\series B.csv"},
    {"~\\My Documents\\Lectures\\statistics notes.txt"},
    {"~\\My Documents\\Lectures\\oceanography.htm"},
    {"~\\My Documents\\Lectures\\exam questions 2008.txt", Use::kGone},
    {"~\\My Documents\\source\\sort.c.txt", Use::kExists | Use::kDialog},
    {"~\\My Documents\\source\\readme.txt"},
    {"~\\My Documents\\My Pictures\\harbour at night.jpg"},
    {"~\\My Documents\\My Pictures\\quilt.gif"},
    {"~\\Desktop\\application letter.doc", Use::kGone},
    {"D:\\Lectures\\week 7.avi", Use::kRecent},
});

constexpr auto kSentences = std::to_array<std::string_view>({
    "This chapter describes how the salinity of the harbour basin was measured.",
    "All series were taken at noon, at a depth of two metres.",
    "The third series is shorter, because the buoy was stolen.",
    "Sorting by insertion needs few comparisons when little is out of place.",
    "Ask Professor Holm whether the appendix counts towards the length.",
    "The mean differs from the median wherever ships passed during the measurement.",
    "Next lecture: currents, and why bath tubs do not matter.",
    "Still to do: captions, list of figures, thanks to my parents.",
});

constexpr auto kTyped = std::to_array<std::string_view>({
    "http://library.example.edu/",
    "http://www.hexchess.example.net/ladder",
    "http://forum.example.org/ocean",
    "ocean-data.example.org",
    "http://search.example.com/",
    "http://films.example.com/tonight",
});

constexpr auto kPages = std::to_array<std::string_view>({
    "http://library.example.edu/",
    "http://library.example.edu/catalogue?author=holm",
    "http://library.example.edu/catalogue?title=salinity",
    "http://library.example.edu/images/logo.gif",
    "http://www.hexchess.example.net/",
    "http://www.hexchess.example.net/ladder",
    "http://www.hexchess.example.net/game?id=20817",
    "http://www.hexchess.example.net/style.css",
    "http://forum.example.org/ocean",
    "http://forum.example.org/ocean/topic/118",
    "http://forum.example.org/ocean/topic/131?page=3",
    "http://ocean-data.example.org/",
    "http://ocean-data.example.org/buoys/N4.html",
    "http://ocean-data.example.org/buoys/N5.html",
    "http://ocean-data.example.org/plot?buoy=N5&from=2009-06-01",
    "http://search.example.com/search?q=median+of+a+series",
    "http://search.example.com/search?q=buoy+stolen",
    "http://films.example.com/tonight",
    "http://films.example.com/trailer/17",
    "http://jobs.example.com/students?town=Nordhafen",
    "http://news.example.com/",
    "http://news.example.com/2009/11/harbour-festival.html",
    "http://user@mirror.example.net/tiny-compiler/",
    "https://mensa.example.edu/menu",
});

void AddCachedPages(Profile& profile) {
    profile.Visited("", kPages);
    constexpr std::array<std::string_view, 4> kFolders = {"4RQ3WXYZ", "8DEF01AB", "C9KLM5NO", "GH2UVT67"};
    std::vector<IndexRecord>& visits = profile.Visits();
    for (std::size_t i = 0; i < visits.size(); ++i) {
        visits[i].folder = static_cast<std::uint8_t>(i % kFolders.size());
        visits[i].fileName = "page[" + std::to_string(i + 1) + "].htm";
        visits[i].headers = "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n~U:felix\r\n";
        visits[i].fileSize = static_cast<std::uint32_t>(2000 + i * 137);
    }
    IndexOptions options;
    options.folders.assign(kFolders.begin(), kFolders.end());
    profile.AddIndex("~\\Local Settings\\Temporary Internet Files\\Content.IE5\\index.dat", options);
}

/// What the log alone knows: the last programs, the last typed address and the last document.
void TakeAwayLatest(HiveKey& root) {
    HiveKey& counts = root.Key(std::string(kFirstUserAssist) + "\\Count");
    counts.values.erase(counts.values.end() - 2, counts.values.end());
    root.Key("Software\\Microsoft\\Internet Explorer\\TypedURLs").values.pop_back();
    HiveKey& texts = root.Key(std::string(kOpenSaveMru) + "\\txt");
    texts.values.erase(texts.values.end() - 2, texts.values.end());
    texts.SetString("MRUList", "ba");
}

}  // namespace

void AddFelix(SampleVolume& volume) {
    Profile profile(volume, "C:\\Documents and Settings\\felix", FileTimeOf({2009, 11, 12, 8, 30, 0}));
    profile.RanPrograms(kPrograms);
    for (const std::string_view name : kDirect) {
        profile.Ran(profile.SecondCounts(), name, 8);
    }
    profile.UsedDocuments(kDocuments, kSentences);
    profile.Typed(kTyped);
    AddCachedPages(profile);

    HiveOptions hive;
    hive.minorVersion = 3;
    hive.lastWritten = LastShutdown() - 2 * kDay;
    hive.primarySequence = hive.secondarySequence = 187;
    profile.AddDirtyHive(hive, TakeAwayLatest);
}

}  // namespace ostrevin::samples
