#include "tools/sample-volume/Machine.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <utility>

#include "tools/sample-volume/Documents.h"
#include "tools/sample-volume/Profile.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

constexpr std::uint32_t kExpandString = 2;
constexpr std::string_view kConfig = "C:\\WINDOWS\\system32\\config\\";
constexpr std::string_view kPeople = "C:\\Documents and Settings\\";
constexpr std::string_view kAllUsers = "C:\\Documents and Settings\\All Users";

std::vector<std::byte> Bytes(std::string_view text) {
    ByteBuffer out;
    out.Text(text);
    return out.Take();
}

void AddProfileEntry(HiveKey& list, const std::string& sid, const std::string& path) {
    HiveKey& profile = list.Key(sid);
    profile.SetString("ProfileImagePath", path, kExpandString);
    profile.SetDword("Flags", 0);
    profile.SetDword("State", 0x100);
    if (sid.find('.') == std::string::npos) {
        profile.SetBinary("Sid", SidBytes(sid));
    }
}

void AddProfileList(HiveKey& version, unsigned plainProfiles) {
    HiveKey& list = version.Key("ProfileList");
    list.SetString("AllUsersProfile", "All Users");
    list.SetString("DefaultUserProfile", "Default User");
    list.SetString("ProfilesDirectory", "%SystemDrive%\\Documents and Settings", kExpandString);
    const std::string people = "%SystemDrive%\\Documents and Settings\\";
    AddProfileEntry(list, "S-1-5-18", "%systemroot%\\system32\\config\\systemprofile");
    AddProfileEntry(list, "S-1-5-19", people + "LocalService");
    AddProfileEntry(list, "S-1-5-20", people + "NetworkService");
    AddProfileEntry(list, SidOf(kMachineSid, kAnnaRid), people + "anna");
    AddProfileEntry(list, SidOf(kMachineSid, kFelixRid), people + "felix");
    // Left over from a profile that the system could not load once: no account has this identifier.
    AddProfileEntry(list, SidOf(kMachineSid, kFelixRid) + ".bak", people + "felix");
    AddProfileEntry(list, SidOf(kMachineSid, kSvetlanaRid), people + "Светлана");
    AddProfileEntry(list, SidOf(kDomainSid, kKellerRid), people + "M.Keller");
    for (unsigned i = 0; i < plainProfiles; ++i) {
        AddProfileEntry(list, SidOf(kMachineSid, kFirstPlainRid + i), people + PlainName(i));
    }
}

HiveKey SoftwareHive(unsigned plainProfiles) {
    HiveKey root;
    root.name = "$$$PROTO.HIV";
    HiveKey& version = root.Key("Microsoft\\Windows NT\\CurrentVersion");
    version.SetString("ProductName", "Microsoft Windows XP");
    version.SetString("CurrentVersion", "5.1");
    version.SetString("CurrentBuildNumber", "2600");
    version.SetString("CSDVersion", "Service Pack 3");
    version.SetString("SystemRoot", "C:\\WINDOWS");
    version.SetString("RegisteredOwner", "Anna Lindqvist");
    version.SetDword("InstallDate", 1204732800);
    HiveKey& logon = version.Key("Winlogon");
    logon.SetString("DefaultUserName", "anna");
    logon.SetString("DefaultDomainName", kMachineName);
    logon.SetString("Shell", "Explorer.exe");
    AddProfileList(version, plainProfiles);

    HiveKey& windows = root.Key("Microsoft\\Windows\\CurrentVersion");
    windows.SetString("ProgramFilesDir", "C:\\Program Files");
    windows.SetString("CommonFilesDir", "C:\\Program Files\\Common Files");
    for (const auto& [name, below] :
         {std::pair{"Common AppData", "Application Data"}, std::pair{"Common Desktop", "Desktop"},
          std::pair{"Common Documents", "Documents"}, std::pair{"Common Programs", "Start Menu\\Programs"},
          std::pair{"Common Start Menu", "Start Menu"},
          std::pair{"Common Startup", "Start Menu\\Programs\\Startup"}}) {
        windows.Key("Explorer\\Shell Folders").SetString(name, std::string(kAllUsers) + "\\" + below);
        windows.Key("Explorer\\User Shell Folders")
            .SetString(name, std::string("%ALLUSERSPROFILE%\\") + below, kExpandString);
    }
    for (const auto& [extension, type, kind] :
         {std::array{".txt", "txtfile", "Text Document"}, std::array{".bmp", "Paint.Picture", "Bitmap Image"},
          std::array{".htm", "htmlfile", "HTML Document"}, std::array{".lnk", "lnkfile", "Shortcut"}}) {
        root.Key("Classes").Key(extension).SetString("", type);
        root.Key("Classes").Key(type).SetString("", kind);
    }
    return root;
}

void AddControlSet(HiveKey& set, std::int32_t bias, std::string_view codePage) {
    HiveKey& control = set.Key("Control");
    control.Key("ComputerName\\ComputerName").SetString("ComputerName", kMachineName);
    HiveKey& codePages = control.Key("Nls\\CodePage");
    codePages.SetString("ACP", codePage);
    codePages.SetString("OEMCP", "850");
    HiveKey& zone = control.Key("TimeZoneInformation");
    zone.SetDword("ActiveTimeBias", static_cast<std::uint32_t>(bias));
    zone.SetDword("Bias", static_cast<std::uint32_t>(bias));
    zone.SetDword("DaylightBias", static_cast<std::uint32_t>(-60));
    zone.SetDword("StandardBias", 0);
    zone.SetString("StandardName", "W. Europe Standard Time");
    zone.SetString("DaylightName", "W. Europe Daylight Time");
    HiveKey& environment = control.Key("Session Manager\\Environment");
    environment.SetString("ComSpec", "%SystemRoot%\\system32\\cmd.exe", kExpandString);
    environment.SetString("OS", "Windows_NT");
    environment.SetString("Path", "%SystemRoot%\\system32;%SystemRoot%", kExpandString);
    environment.SetString("TEMP", "%SystemRoot%\\TEMP", kExpandString);
    environment.SetString("windir", "%SystemRoot%", kExpandString);
    set.Key("Services\\Tcpip\\Parameters").SetString("Hostname", "kontor-7");
}

HiveKey SystemHive() {
    HiveKey root;
    root.name = "$$$PROTO.HIV";
    // The first set failed once; the machine runs on the second one.
    AddControlSet(root.Key("ControlSet001"), 480, "437");
    AddControlSet(root.Key("ControlSet002"), -60, "1252");
    HiveKey& select = root.Key("Select");
    select.SetDword("Current", 2);
    select.SetDword("Default", 2);
    select.SetDword("Failed", 1);
    select.SetDword("LastKnownGood", 2);
    root.Key("MountedDevices").SetBinary("\\DosDevices\\C:", SidBytes("S-1-5-18"));
    return root;
}

HiveKey SecurityHive() {
    HiveKey root;
    root.name = "SECURITY";
    HiveKey& policy = root.Key("Policy");
    policy.Key("PolAcDmS").Set("", 0, SidBytes(kMachineSid));
    policy.Key("PolPrDmS").Set("", 0, SidBytes(kDomainSid));
    for (const auto& [key, name] :
         {std::pair{"PolAcDmN", kMachineName}, std::pair{"PolPrDmN", kDomainName}}) {
        ByteBuffer data;
        const std::vector<std::byte> text = TextData(name);
        data.U16(Size16(text.size() - 2));
        data.U16(Size16(text.size()));
        data.U32(8);
        data.Bytes(text);
        policy.Key(key).Set("", 0, data.Take());
    }
    return root;
}

void AddConfigHives(SampleVolume& volume, const SampleOptions& options) {
    HiveOptions hive;
    hive.lastWritten = LastShutdown();
    const auto add = [&](std::string_view name, HiveKey root, std::uint32_t minorVersion) {
        hive.minorVersion = minorVersion;
        hive.fileName = "\\SystemRoot\\System32\\Config\\" + std::string(name);
        volume.Add(std::string(kConfig) + std::string(name), HiveFile{std::move(root), hive, {}});
    };
    HiveKey standard;
    standard.name = "$$$PROTO.HIV";
    Profile::AddShellFolders(standard, "C:\\WINDOWS\\system32\\config\\systemprofile");
    add("software", SoftwareHive(options.extraProfiles), 5);
    add("system", SystemHive(), 3);
    add("SAM", AccountDatabase(MachineAccounts(options.extraProfiles)), 3);
    add("SECURITY", SecurityHive(), 3);
    add("default", std::move(standard), 5);
    volume.AddFolder(std::string(kConfig) + "systemprofile");
}

void AddHive(Profile& profile) {
    HiveOptions options;
    options.lastWritten = profile.Time().Next();
    profile.AddHive(options);
}

void AddServiceProfile(SampleVolume& volume, std::string_view name) {
    Profile profile(volume, std::string(kPeople) + std::string(name), LastShutdown() - 80 * kDay);
    AddHive(profile);
}

void AddPlainProfile(SampleVolume& volume, unsigned number) {
    Profile profile(volume, std::string(kPeople) + PlainName(number),
                    LastShutdown() - (number % 90 + 10) * kDay);
    profile.Ran("UEME_RUNPATH:C:\\WINDOWS\\system32\\notepad.exe", 7);
    AddHive(profile);
}

void AddCommonFiles(SampleVolume& volume) {
    volume.Add(
        "C:\\boot.ini",
        Bytes("[boot loader]\r\ntimeout=30\r\ndefault=multi(0)disk(0)rdisk(0)partition(1)\\WINDOWS\r\n"
              "[operating systems]\r\nmulti(0)disk(0)rdisk(0)partition(1)\\WINDOWS=\"Microsoft Windows XP\" "
              "/fastdetect\r\n"));
    volume.Add("C:\\WINDOWS\\win.ini", Bytes("; for 16-bit app support\r\n[fonts]\r\n[extensions]\r\n"));
    for (const std::string_view program :
         {"C:\\WINDOWS\\explorer.exe", "C:\\WINDOWS\\NOTEPAD.EXE", "C:\\WINDOWS\\regedit.exe",
          "C:\\WINDOWS\\system32\\calc.exe", "C:\\WINDOWS\\system32\\cmd.exe",
          "C:\\WINDOWS\\system32\\notepad.exe", "C:\\WINDOWS\\system32\\mspaint.exe",
          "C:\\WINDOWS\\system32\\sol.exe", "C:\\Program Files\\Internet Explorer\\IEXPLORE.EXE"}) {
        volume.Add(program, ProgramBytes(program));
    }
    for (const auto& [name, target] :
         {std::pair{"Accessories\\Calculator.lnk", "C:\\WINDOWS\\system32\\calc.exe"},
          std::pair{"Accessories\\Notepad.lnk", "C:\\WINDOWS\\system32\\notepad.exe"},
          std::pair{"Accessories\\Paint.lnk", "C:\\WINDOWS\\system32\\mspaint.exe"},
          std::pair{"Games\\Solitaire.lnk", "C:\\WINDOWS\\system32\\sol.exe"}}) {
        volume.Add(std::string(kAllUsers) + "\\Start Menu\\Programs\\" + name,
                   LinkTo(target, 1024, LastShutdown() - 600 * kDay));
    }
    volume.AddFolder(std::string(kAllUsers) + "\\Documents");
}

}  // namespace

std::string SidOf(std::string_view authority, std::uint32_t rid) {
    return std::string(authority) + "-" + std::to_string(rid);
}

std::vector<std::byte> SidBytes(std::string_view sid) {
    std::vector<std::uint32_t> numbers;  // revision, authority, then the parts
    std::size_t start = 2;
    while (start <= sid.size()) {
        const std::string_view text = sid.substr(start, sid.find('-', start) - start);
        std::uint32_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size()) {
            throw std::invalid_argument("not a security identifier: " + std::string(sid));
        }
        numbers.push_back(number);
        start += text.size() + 1;
    }
    ByteBuffer out;
    out.U8(static_cast<std::uint8_t>(numbers.at(0)));
    out.U8(static_cast<std::uint8_t>(numbers.size() - 2));
    out.Bytes(std::array<std::byte, 5>{});
    out.U8(static_cast<std::uint8_t>(numbers.at(1)));
    for (std::size_t i = 2; i < numbers.size(); ++i) {
        out.U32(numbers[i]);
    }
    return out.Take();
}

std::string PlainName(unsigned number) {
    return "user" + std::to_string(number + 1);
}

std::uint64_t LastShutdown() {
    return FileTimeOf({2009, 11, 27, 17, 42, 9});
}

std::vector<Account> MachineAccounts(unsigned plainAccounts) {
    const std::uint64_t lastDay = LastShutdown() - 9 * kHour;
    std::vector<Account> accounts = {
        {"Administrator", "", "Built-in account for administering the computer", 500, lastDay - 30 * kDay, 6,
         false},
        {"Guest", "", "Built-in account for guest access", 501, 0, 0, true},
        {"HelpAssistant", "Remote Desktop Help Assistant Account", "", 1000, 0, 0, true},
        {"anna", "Anna Lindqvist", "Office", kAnnaRid, lastDay, 412, false},
        {"felix", "Felix Brandt", "", kFelixRid, lastDay - 2 * kDay, 187, false},
        {"Светлана", "Светлана Орлова", "Бухгалтерия", kSvetlanaRid, lastDay - 5 * kDay, 64, false},
    };
    for (unsigned i = 0; i < plainAccounts; ++i) {
        accounts.push_back({PlainName(i), "", "", kFirstPlainRid + i, lastDay - (i % 90) * kDay, 1, false});
    }
    return accounts;
}

void AddMachine(SampleVolume& volume, const SampleOptions& options) {
    AddConfigHives(volume, options);
    AddCommonFiles(volume);
    AddServiceProfile(volume, "LocalService");
    AddServiceProfile(volume, "NetworkService");
    for (unsigned i = 0; i < options.extraProfiles; ++i) {
        AddPlainProfile(volume, i);
    }
}

}  // namespace ostrevin::samples
