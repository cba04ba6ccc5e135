#include <array>
#include <utility>

#include "tools/sample-volume/Machine.h"
#include "tools/sample-volume/People.h"
#include "tools/sample-volume/Profile.h"
#include "tools/writers/ByteBuffer.h"

namespace ostrevin::samples {
namespace {

using Use = DocumentEntry::Use;

constexpr auto kPrograms = std::to_array<ProgramEntry>({
    {"C:\\Program Files\\Bluebird Office\\bbwriter.exe", 214},
    {"C:\\Program Files\\Bluebird Office\\bbsheet.exe", 163},
    {"C:\\Program Files\\Bluebird Office\\bbslides.exe", 17},
    {"C:\\Program Files\\Internet Explorer\\IEXPLORE.EXE", 388},
    {"C:\\Program Files\\Outlook Express\\msimn.exe", 301},
    {"C:\\Program Files\\Kontor Ledger\\Ledger.exe", 96},
    {"C:\\Program Files\\Kontor Ledger\\Update\\ledgerup.exe", 4},
    {"C:\\Program Files\\Windows Media Player\\wmplayer.exe", 12},
    {"C:\\Program Files\\Pocket Scanner\\scan32.exe", 38},
    {"C:\\Program Files\\Label Maker 3\\labels.exe", 21},
    {"C:\\Program Files\\Old Fax\\faxsend.exe", 9, false},
    {"C:\\WINDOWS\\system32\\notepad.exe", 77},
    {"C:\\WINDOWS\\system32\\mspaint.exe", 14},
    {"C:\\WINDOWS\\system32\\calc.exe", 133},
    {"C:\\WINDOWS\\system32\\sol.exe", 58},
    {"C:\\WINDOWS\\system32\\charmap.exe", 3},
    {"C:\\WINDOWS\\system32\\cleanmgr.exe", 2},
    {"C:\\WINDOWS\\system32\\osk.exe", 1, false},
    {"C:\\WINDOWS\\explorer.exe", 45},
    {"C:\\WINDOWS\\NOTEPAD.EXE", 6},
    {"~\\Desktop\\setup_labels3.exe", 1, false},
    {"~\\Desktop\\Holiday Pictures.exe", 1, false},
    {"~\\My Documents\\Downloads\\packing-list-viewer.exe", 2},
    {"~\\My Documents\\Downloads\\zip-helper-setup.EXE", 1, false},
    {"~\\Local Settings\\Temp\\nsl3.tmp\\uninst.exe", 1, false},
    {"E:\\AUTORUN.EXE", 1, false},
    {"E:\\Pictures\\viewer.exe", 3, false},
    {"\\\\PRINTSRV\\tools\\drivers\\lj-setup.exe", 1, false},
    {"C:\\Program Files\\Bluebird Office\\bbwriter.exe.manifest", 1, false},
});

constexpr auto kDocuments = std::to_array<DocumentEntry>({
    {"~\\My Documents\\Letters\\Offer Petersen.doc"},
    {"~\\My Documents\\Letters\\Offer Petersen second version.doc"},
    {"~\\My Documents\\Letters\\Reminder October.rtf"},
    {"~\\My Documents\\Letters\\Thanks to Mrs Åkesson.doc"},
    {"~\\My Documents\\Letters\\Complaint Café Müller.rtf", Use::kExists | Use::kRecent},
    {"~\\My Documents\\Accounts\\travel 2009.csv"},
    {"~\\My Documents\\Accounts\\invoices 2009-10.csv"},
    {"~\\My Documents\\Accounts\\invoices 2009-11.csv"},
    {"~\\My Documents\\Accounts\\budget 2010 draft.csv", Use::kGone},
    {"~\\My Documents\\minutes 2009-11-03.txt"},
    {"~\\My Documents\\minutes 2009-11-17.txt"},
    {"~\\My Documents\\phone list.txt", Use::kExists | Use::kRecent},
    {"~\\My Documents\\passwords - to be deleted.txt", Use::kGone},
    {"~\\My Documents\\My Pictures\\Summer party\\terrace.jpg"},
    {"~\\My Documents\\My Pictures\\Summer party\\sunset.jpg"},
    {"~\\My Documents\\My Pictures\\Summer party\\lawn.jpg"},
    {"~\\My Documents\\My Pictures\\Summer party\\everyone.jpg", Use::kGone},
    {"~\\My Documents\\My Pictures\\new logo.png"},
    {"~\\My Documents\\My Pictures\\old logo.gif"},
    {"~\\My Documents\\My Pictures\\floor plan.bmp"},
    {"~\\My Documents\\Downloads\\timetable.htm", Use::kExists | Use::kRecent},
    {"~\\My Documents\\Downloads\\price list autumn.pdf", Use::kGone},
    {"~\\My Documents\\Downloads\\order-form.html", Use::kExists | Use::kDialog},
    {"~\\Desktop\\shopping.txt"},
    {"~\\Desktop\\figures for the board.csv", Use::kExists | Use::kRecent},
    {"C:\\Documents and Settings\\All Users\\Documents\\Holiday plan.csv"},
    {"E:\\Pictures\\DSC00112.JPG", Use::kGone},
    {"E:\\Pictures\\DSC00113.JPG", Use::kRecent},
    {"~\\My Documents\\Letters", Use::kRecent},
    {"~\\My Documents\\My Pictures\\Summer party", Use::kRecent},
});

constexpr auto kSentences = std::to_array<std::string_view>({
    "Thank you for your call on Tuesday; as agreed I am sending you our offer.",
    "The prices hold until the end of the year and include delivery.",
    "Please let me know by Friday how many chairs we need for the meeting.",
    "The invoice of 12 October has not been paid yet; perhaps it was overlooked.",
    "Mrs Åkesson brought the samples of the new paper; the cream one is best.",
    "Room 4 gets its new shelves in the second week of December.",
    "Coffee, milk, printer paper, two boxes of envelopes, candles.",
    "Present: Anna, Felix, Svetlana; excused: Mr Keller.",
    "The summer party shall take place on the terrace again, rain or shine.",
    "Enclosed you find the timetable, the plan of the building and the list of phone numbers.",
    "With kind regards, Anna Lindqvist",
});

constexpr auto kTyped = std::to_array<std::string_view>({
    "http://start.example.com/",
    "http://mail.example.org/inbox",
    "www.timetable.example.net",
    "http://weather.example.com/north/",
    "",  // emptied by hand
    "http://www.paper-and-more.example.com/catalogue",
    "http://recipes.example.org/plum-cake",
    "https://bank.example.com/",
});

constexpr auto kVisited = std::to_array<std::string_view>({
    "http://start.example.com/",
    "http://mail.example.org/inbox",
    "http://mail.example.org/inbox?page=2",
    "http://mail.example.org/read?message=4711",
    "http://mail.example.org/compose",
    "http://news.example.com/",
    "http://news.example.com/2009/11/harbour-festival.html",
    "http://news.example.com/2009/11/new-tram-line.html",
    "http://news.example.com/2009/11/school-choir-wins.html",
    "http://weather.example.com/north/",
    "http://weather.example.com/north/weekend",
    "http://www.timetable.example.net/",
    "http://www.timetable.example.net/search?from=Nordhafen&to=Lindenberg&day=2009-11-20",
    "http://www.timetable.example.net/search?from=Lindenberg&to=Nordhafen&day=2009-11-22",
    "http://www.paper-and-more.example.com/catalogue",
    "http://www.paper-and-more.example.com/catalogue/envelopes?size=C5",
    "http://www.paper-and-more.example.com/basket",
    "https://bank.example.com/",
    "https://bank.example.com/login",
    "http://recipes.example.org/plum-cake",
    "http://recipes.example.org/onion-soup",
    "http://recipes.example.org/search?q=cinnamon+rolls",
    "http://maps.example.net/?q=Lindenberg+station",
    "http://dictionary.example.org/en/terrace",
    "http://dictionary.example.org/en/overlooked",
    "http://search.example.com/search?q=office+chairs",
    "http://search.example.com/search?q=office+chairs&start=10",
    "http://search.example.com/search?q=how+to+print+labels",
    "http://chairs.example.net/comfort-line/",
    "http://chairs.example.net/comfort-line/order?step=2",
    "http://www.museum.example.org/opening-hours.html",
    "http://www.museum.example.org/exhibitions/ships.html",
    "file:///C:/Documents%20and%20Settings/anna/My%20Documents/minutes%202009-11-17.txt",
    "file:///C:/Documents%20and%20Settings/anna/My%20Documents/Downloads/timetable.htm",
    "file:///E:/Pictures/DSC00112.JPG",
    "about:Home",
    "about:blank",
    // What the list leaves out.
    "ftp://files.example.org/drivers/",
    "mailto:orders@paper-and-more.example.com",
    "HTTP://WWW.EXAMPLE.COM/INDEX.HTML",
    // More than one "@".
    "http://anna@files.example.net/shared/plan.html",
    "mailto:petra@example.org?subject=Plan@work",
});

/// Names of all ten kinds, and what is no count.
void AddOddCounts(Profile& profile) {
    HiveKey& counts = profile.Counts();
    profile.Ran("UEME_CTLCUACount:ctor", 7);
    profile.Ran("UEME_RUNPIDL", 391);
    profile.Ran("UEME_RUNPIDL:%csidl2%\\Accessories\\Calculator.lnk", 19);
    profile.Ran("UEME_RUNPIDL:%csidl2%\\Accessories\\Notepad.lnk", 11);
    profile.Ran("UEME_RUNPIDL:%csidl2%\\Games\\Solitaire.lnk", 63);
    profile.Ran("UEME_RUNPIDL:%csidl2%\\Games", 8);
    profile.Ran("UEME_RUNPIDL:" + profile.Expand("~\\Start Menu\\Programs\\Kontor Ledger.lnk"), 14);
    profile.Ran("UEME_RUNCPL", 15);
    profile.Ran("UEME_RUNCPL:timedate.cpl", 7);
    profile.Ran("UEME_RUNCPL:\"C:\\WINDOWS\\system32\\desk.cpl\",Display", 9);
    profile.Ran("UEME_UITOOLBAR", 230);
    profile.Ran("UEME_UITOOLBAR:0x1,120", 41);
    profile.Ran("UEME_RUNWMCMD:0x1,28", 12);
    profile.Ran("UEME_UIHOTKEY", 8);
    profile.Ran("UEME_UIHOTKEY:5", 8);
    profile.Ran("UEME_UISCUT", 122);
    profile.Ran("UEME_UIQCUT", 54);
    profile.Ran("UEME_RUNPATH", 1290);
    profile.Ran("UEME_RUNPATH:", 6);
    profile.Ran("UEME_RUNPATHwithout a colon.exe", 6);
    profile.Ran("UEME_RUNPATH:C:\\WINDOWS\\system32\\start-of-day.bat", 29);
    profile.Ran("UEME_RUNPATH:C:\\EXECUTIVE SUMMARY\\print.com", 8);
    profile.Ran("UEME_RUNPATH:%csidl2%\\Old Fax\\fax.exe", 6);
    profile.Ran("UEME_UNHEARDOF:C:\\WINDOWS\\system32\\ctfmon.exe", 6);
    // Fewer starts than the shell begins to count with.
    for (std::uint32_t count = 0; count < 5; ++count) {
        profile.Ran("UEME_RUNPATH:C:\\Program Files\\Trial " + std::to_string(count) + "\\trial.exe", count);
    }
    // Data shorter than a count, and longer.
    for (const std::size_t size : {std::size_t{8}, std::size_t{5}, std::size_t{0}, std::size_t{24}}) {
        std::vector<std::byte> data = CountData(9, profile.Time().Next());
        data.resize(size);
        const std::string name =
            "UEME_RUNPATH:C:\\Program Files\\Cut Off\\" + std::to_string(size) + " bytes.exe";
        counts.Add(Rot13(name), 3, std::move(data));
    }
    counts.Add(Rot13("UEME_RUNPATH:C:\\Program Files\\Never Run\\never.exe"), 3, CountData(6, 0));
    // Not written by the shell: no letter of these is moved.
    counts.Add("UEME_RUNPATH:C:\\Tools\\plain name.exe", 3, CountData(9, profile.Time().Next()));
    counts.Add("Remark", 1, TextData("counted since March"));
}

void AddOddDialogs(HiveKey& dialogs) {
    // A letter without its value repeats the document before it.
    HiveKey& gap = dialogs.Key("xyz");
    gap.SetString("a", "C:\\Data\\measurements 1.xyz");
    gap.SetString("b", "C:\\Data\\measurements 2.xyz");
    gap.SetString("d", "C:\\Data\\not in the list.xyz");
    gap.SetString("MRUList", "bca");
    // The same document under two extensions.
    HiveKey& twice = dialogs.Key("text");
    twice.SetString("a", "C:\\Documents and Settings\\anna\\Desktop\\shopping.txt");
    twice.SetString("MRUList", "a");
    // An empty list, and (below) none at all, for which the letters of the list before it count.
    dialogs.Key("wri").SetString("a", "C:\\never listed.wri");
    dialogs.Key("wri").SetString("MRUList", "");
    HiveKey& without = dialogs.Key("xyz2");
    without.SetString("a", "C:\\Data\\first without a list.xyz2");
    without.SetString("b", "C:\\Data\\second without a list.xyz2");
}

void AddOddTyped(HiveKey& typed) {
    typed.SetString("url11", "http://gap.example.org/after-url8");
    typed.SetString("url25", "http://last.example.org/");
    typed.SetString("url26", "http://beyond.example.org/");
    typed.SetString("url01", "http://leading-zero.example.org/");
}

void AddOddRecents(SampleVolume& volume, Profile& profile) {
    const auto now = [&] { return profile.Time().Next(); };
    const std::string recent = profile.Folder() + "\\Recent\\";
    Link network;
    LinkInfo info;
    info.network = LinkNetwork{"\\\\PRINTSRV\\scans", "S:", 0x00020000, {}, {}};
    info.suffix = "2009-11\\contract.pdf";
    network.info = info;
    network.accessed = now();
    profile.AddRecent("contract.pdf", network);

    Link listOnly =
        LinkTo("C:\\Documents and Settings\\anna\\My Documents\\minutes 2009-11-03.txt", 800, now());
    listOnly.info.reset();
    profile.AddRecent("minutes (by list)", listOnly);

    Link narrow = LinkTo("C:\\WINDOWS\\win.ini", 60, now());
    narrow.unicode = false;
    narrow.description = "Settings – old";
    narrow.arguments = "/p";
    narrow.hotKey = 0x0657;
    narrow.showCommand = 3;
    narrow.iconFile = "C:\\WINDOWS\\system32\\shell32.dll";
    narrow.iconIndex = -151;
    profile.AddRecent("win.ini", narrow);

    Link environment = LinkTo("C:\\WINDOWS\\system32\\notepad.exe", 60, now());
    environment.environmentPath = "%SystemRoot%\\system32\\notepad.exe";
    profile.AddRecent("notepad", environment);

    ByteBuffer text;
    text.Text("A note that somebody dropped here.\r\n");
    volume.Add(recent + "note to self.txt", text.View());
    ByteBuffer settings;
    settings.Text("[.ShellClassInfo]\r\nCLSID={0C39A5CF-1A7A-40C8-BA74-8900E6DF5FCD}\r\n");
    volume.Add(recent + "Desktop.ini", settings.Take());
    ByteBuffer broken;
    broken.Text("L\x01 not a shortcut in spite of its name");
    volume.Add(recent + "zz broken.lnk", broken.Take());
}

void AddOddVisits(Profile& profile) {
    const std::string_view prefix = "Visited: anna@";
    std::vector<IndexRecord>& visits = profile.Visits();
    // Records that end with their block: the scan passes over the block that follows.
    for (const std::size_t end : {std::size_t{0}, std::size_t{127}}) {
        const std::string padded = PadAddress(
            std::string(prefix) + "http://long.example.com/ends-at-" + std::to_string(end) + "/", end);
        const std::array<std::string_view, 2> pair = {std::string_view(padded).substr(prefix.size()),
                                                      "http://follower.example.com/"};
        profile.Visited(prefix, pair);
    }
    // No user's name in front.
    constexpr std::array<std::string_view, 1> kPlain = {"http://no-prefix.example.com/"};
    profile.Visited("", kPlain);
    visits[3].kind = IndexRecord::Kind::Leak;
    visits[11].kind = IndexRecord::Kind::Leak;
    visits[7].headers = "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n~U:anna\r\n";
    visits[14].accessed = 0;
    IndexRecord redirect;
    redirect.kind = IndexRecord::Kind::Redirect;
    redirect.address = "http://moved.example.com/";
    visits.insert(visits.begin() + 5, redirect);
    // A record's beginning inside of other data.
    IndexRecord raw;
    raw.kind = IndexRecord::Kind::Raw;
    ByteBuffer data;
    data.Text("left over from something else...");
    data.Text("URL ");
    data.U32(1);
    data.U64(profile.Time().Next());
    data.U64(profile.Time().Next());
    data.PadTo(data.Size() + 80);
    data.TextZ("Visited: anna@http://inside.example.com/");
    raw.raw = data.Take();
    visits.push_back(raw);
    profile.Visited(prefix, kPlain);
}

void AddOtherIndexes(Profile& profile) {
    // These are there, and are not read as long as there is a history.
    profile.Visits().clear();
    constexpr auto kCookies = std::to_array<std::string_view>({"example.com/", "mail.example.org/"});
    profile.Visited("Cookie:anna@", kCookies);
    profile.AddIndex("~\\Cookies\\index.dat");
    profile.Visits().clear();
    constexpr auto kToday =
        std::to_array<std::string_view>({"http://start.example.com/", ":Host: mail.example.org"});
    profile.Visited(":2009112720091128: anna@", kToday);
    profile.AddIndex("~\\Local Settings\\History\\History.IE5\\MSHist012009112720091128\\index.dat");
}

}  // namespace

void AddAnna(SampleVolume& volume, const SampleOptions& options) {
    Profile profile(volume, "C:\\Documents and Settings\\anna", FileTimeOf({2009, 11, 9, 6, 50, 0}));
    // The shell's own session comes first: eight bytes.
    std::vector<std::byte> session = CountData(13, 0);
    session.resize(8);
    profile.Counts().Add(Rot13("UEME_CTLSESSION"), 3, std::move(session));
    profile.RanPrograms(kPrograms);
    AddOddCounts(profile);
    for (unsigned i = 0; i < options.extraUserAssistValues; ++i) {
        profile.Ran("UEME_RUNPATH:C:\\Program Files\\Suite " + std::to_string(i / 100) + "\\tool" +
                        std::to_string(i) + ".exe",
                    6 + i % 50);
    }
    HiveKey& toolbar = profile.SecondCounts().Key("Count");
    profile.Ran(toolbar, "UEME_UITOOLBAR:0x1,133", 9);
    profile.UsedDocuments(kDocuments, kSentences);
    AddOddRecents(volume, profile);
    AddOddDialogs(profile.Root().Key(kOpenSaveMru));
    profile.Typed(kTyped);
    AddOddTyped(profile.TypedUrls());

    profile.Visited("Visited: anna@", kVisited);
    AddOddVisits(profile);
    for (unsigned i = 0; i < options.extraIndexRecords; ++i) {
        const std::string address = "http://archive.example.org/page/" + std::to_string(i);
        const std::array<std::string_view, 1> one = {address};
        profile.Visited("Visited: anna@", one);
    }
    profile.AddIndex("~\\Local Settings\\History\\History.IE5\\index.dat");
    AddOtherIndexes(profile);

    HiveOptions hive;
    hive.lastWritten = LastShutdown();
    hive.primarySequence = hive.secondarySequence = 412;
    profile.AddHive(hive);
}

}  // namespace ostrevin::samples
