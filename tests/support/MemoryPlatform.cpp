#include "tests/support/MemoryPlatform.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <regex>
#include <stdexcept>

#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace ostrevin {
namespace {

constexpr std::uint32_t kKeyQueryValue = 0x1;
constexpr std::uint32_t kKeySetValue = 0x2;
constexpr std::uint32_t kKeyEnumerateSubKeys = 0x8;
constexpr std::uint32_t kAllAccess = 0xF003F;

std::string_view TakeComponent(std::string_view& path) {
    const std::size_t end = path.find('\\');
    const std::string_view component = path.substr(0, end);
    path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
    return component;
}

/// As much of a text as fits a buffer, whole characters only.
std::string Fitting(std::string_view text, std::uint32_t capacity) {
    std::string fitting;
    for (std::uint32_t length = 0; !text.empty();) {
        const char32_t character = TakeCharacter(text);
        length += character < 0x10000 ? 1U : 2U;
        if (length >= capacity) {
            break;
        }
        AppendCharacter(fitting, character);
    }
    return fitting;
}

std::int32_t Store(TextBuffer& buffer, std::string_view text) {
    if (Utf16Length(text) < buffer.capacity) {
        buffer.text = text;
        return kSuccess;
    }
    if (buffer.capacity > 0) {
        buffer.text = Fitting(text, buffer.capacity);
    }
    return kMoreData;
}

std::int32_t StoreData(const MemoryKey::Value& value, std::uint32_t& type, std::byte* data,
                       std::uint32_t& length) {
    const auto size = static_cast<std::uint32_t>(value.data.size());
    const bool fits = data == nullptr || size <= length;
    type = value.type;
    length = size;
    if (data != nullptr && fits) {
        std::copy(value.data.begin(), value.data.end(), data);
    }
    return fits ? kSuccess : kMoreData;
}

/// A path with one kind of separator, and none at its end.
std::string Clean(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path.ends_with('\\') ? path.substr(0, path.size() - 1) : path;
}

std::string FolderOf(const std::string& path) {
    const std::size_t last = path.rfind('\\');
    return last == std::string::npos ? std::string() : path.substr(0, last);
}

std::string NameOf(const std::string& path) {
    return path.substr(path.rfind('\\') + 1);
}

class MemoryInputFile : public InputFile {
  public:
    explicit MemoryInputFile(const MemoryFile& file) : file_(file) {}
    [[nodiscard]] std::uint64_t Size() const override { return file_.bytes.size(); }
    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        const std::uint64_t end = std::min(Size(), file_.readableUpTo.value_or(Size()));
        if (offset >= end) {
            return 0;
        }
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), end - offset));
        std::copy_n(file_.bytes.begin() + static_cast<std::ptrdiff_t>(offset), count, buffer.begin());
        return count;
    }

  private:
    const MemoryFile& file_;
};

// --- Time: 100-ns units, and days since 1899-12-30.

constexpr std::int64_t kUnitsPerSecond = 10'000'000;
constexpr std::int64_t kSecondsPerDay = 86400;

std::optional<std::int64_t> UnitsOf(const FileTime& time) {
    const std::uint64_t units = (std::uint64_t{time.high} << 32U) | time.low;
    if (units > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(units);
}

std::chrono::sys_days FirstDay() {
    return std::chrono::sys_days(std::chrono::year(1899) / 12 / 30);
}

struct DayAndSecond {
    std::chrono::year_month_day day;
    std::int64_t second = 0;
};

std::optional<DayAndSecond> Split(double date) {
    constexpr double kFarthest = 3e6;
    if (!(std::fabs(date) < kFarthest)) {
        return std::nullopt;
    }
    auto days = static_cast<std::int64_t>(date);
    auto second =
        static_cast<std::int64_t>(std::lround(std::fabs(date - static_cast<double>(days)) * kSecondsPerDay));
    if (second == kSecondsPerDay) {
        ++days;
        second = 0;
    }
    const std::chrono::year_month_day day(FirstDay() + std::chrono::days(days));
    if (day.year() < std::chrono::year(100) || day.year() > std::chrono::year(9999)) {
        return std::nullopt;
    }
    return DayAndSecond{day, second};
}

std::string DayText(const std::chrono::year_month_day& day) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%u/%u/%04d", unsigned{day.month()}, unsigned{day.day()},
                  int{day.year()});
    return text.data();
}

std::string TimeText(std::int64_t second) {
    const auto hour = static_cast<int>(second / 3600);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%d:%02d:%02d %s", hour % 12 == 0 ? 12 : hour % 12,
                  static_cast<int>(second / 60 % 60), static_cast<int>(second % 60), hour < 12 ? "AM" : "PM");
    return text.data();
}

/// The bytes 0x80 to 0x9F of code page 1252; the five that it leaves open are control characters.
constexpr std::array<char32_t, 32> kWindows1252 = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

}  // namespace

// --- Keys.

const MemoryKey::SubKey* MemoryKey::FindSubKey(std::string_view name) const {
    const auto found = std::find_if(subKeys_.begin(), subKeys_.end(),
                                    [&](const SubKey& subKey) { return EqualNoCase(subKey.name, name); });
    return found == subKeys_.end() ? nullptr : &*found;
}

void MemoryKey::AddSubKey(std::string_view name, std::shared_ptr<MemoryKey> key) {
    const std::string upper = UpperCase(name);
    const auto place = std::find_if(subKeys_.begin(), subKeys_.end(),
                                    [&](const SubKey& subKey) { return UpperCase(subKey.name) > upper; });
    subKeys_.insert(place, SubKey{std::string(name), std::move(key)});
}

MemoryKey& MemoryKey::Key(std::string_view path) {
    MemoryKey* key = this;
    while (!path.empty()) {
        const std::string_view name = TakeComponent(path);
        if (key->FindSubKey(name) == nullptr) {
            key->AddSubKey(name, std::make_shared<MemoryKey>());
        }
        key = key->FindSubKey(name)->key.get();
    }
    return *key;
}

MemoryKey* MemoryKey::Find(std::string_view path) {
    MemoryKey* key = this;
    while (!path.empty()) {
        const SubKey* found = key->FindSubKey(TakeComponent(path));
        if (found == nullptr) {
            return nullptr;
        }
        key = found->key.get();
    }
    return key;
}

MemoryKey& MemoryKey::SetData(std::string_view name, std::uint32_t type, std::span<const std::byte> data) {
    auto value = std::find_if(values_.begin(), values_.end(),
                              [&](const Value& each) { return EqualNoCase(each.name, name); });
    if (value == values_.end()) {
        value = values_.insert(value, Value{std::string(name), kRegNone, {}});
    }
    value->type = type;
    value->data.assign(data.begin(), data.end());
    return *this;
}

MemoryKey& MemoryKey::SetText(std::string_view name, std::string_view text, std::uint32_t type) {
    const std::string terminated(text);
    return SetData(name, type, std::as_bytes(std::span(terminated.c_str(), terminated.size() + 1)));
}

MemoryKey& MemoryKey::SetDword(std::string_view name, std::uint32_t number) {
    const std::array<std::byte, 4> data = {
        static_cast<std::byte>(number), static_cast<std::byte>(number >> 8U),
        static_cast<std::byte>(number >> 16U), static_cast<std::byte>(number >> 24U)};
    return SetData(name, kRegDword, data);
}

const MemoryKey::Value* MemoryKey::FindValue(std::string_view name) const {
    const auto value = std::find_if(values_.begin(), values_.end(),
                                    [&](const Value& each) { return EqualNoCase(each.name, name); });
    return value == values_.end() ? nullptr : &*value;
}

std::string MemoryKey::Text(std::string_view name) const {
    const Value* value = FindValue(name);
    if (value == nullptr) {
        return {};
    }
    const std::string text(reinterpret_cast<const char*>(value->data.data()), value->data.size());
    return text.substr(0, text.find('\0'));
}

// --- Setting up.

bool MemoryPlatform::NoCaseLess::operator()(std::string_view left, std::string_view right) const {
    return UpperCase(left) < UpperCase(right);
}

MemoryKey& MemoryPlatform::Root(KeyHandle root) {
    return *KeyOf(root);
}

MemoryKey& MemoryPlatform::RemoteRoot(const std::string& computer, KeyHandle root) {
    std::shared_ptr<MemoryKey>& key = computers_[computer][root];
    if (key == nullptr) {
        key = std::make_shared<MemoryKey>();
    }
    return *key;
}

MemoryKey& MemoryPlatform::AddHive(const std::string& file) {
    MemoryFile& added = AddFile(file);
    added.hive = std::make_shared<MemoryKey>();
    return *added.hive;
}

void MemoryPlatform::MountHive(const std::string& name, const std::string& file) {
    MemoryFile* hive = Find(file);
    if (hive == nullptr || hive->hive == nullptr) {
        throw std::invalid_argument("there is no hive " + file);
    }
    hive->inUse = true;
    Root(kUsers).AddSubKey(name, hive->hive);
}

MemoryFile& MemoryPlatform::AddFile(const std::string& path, std::span<const std::byte> bytes,
                                    std::uint32_t attributes) {
    const std::string clean = Clean(path);
    if (const std::string folder = FolderOf(clean); !folder.empty() && Find(folder) == nullptr) {
        AddFolder(folder);
    }
    MemoryFile*& file = filesByPath_[clean];
    if (file == nullptr) {
        file = &files_.emplace_back();
    }
    *file = MemoryFile();
    file->path = clean;
    file->attributes = attributes;
    file->bytes.assign(bytes.begin(), bytes.end());
    return *file;
}

MemoryFile& MemoryPlatform::AddFolder(const std::string& path, std::uint32_t attributes) {
    return AddFile(path, {}, attributes | kAttributeDirectory);
}

MemoryFile& MemoryPlatform::AddShortcut(const std::string& path, const MemoryShortcut& shortcut) {
    MemoryFile& file = AddFile(path);
    file.shortcut = shortcut;
    return file;
}

MemoryFile* MemoryPlatform::Find(const std::string& path) {
    const auto found = filesByPath_.find(Clean(path));
    return found == filesByPath_.end() ? nullptr : found->second;
}

void MemoryPlatform::Fail(const std::string& call, std::int32_t code, int after) {
    failures_[call] = {code, after};
}

std::int32_t MemoryPlatform::FailureOf(const std::string& call) {
    const auto failure = failures_.find(call);
    if (failure == failures_.end()) {
        return kSuccess;
    }
    if (failure->second.after > 0) {
        --failure->second.after;
        return kSuccess;
    }
    return failure->second.code;
}

void MemoryPlatform::ThrowIfManagementFails(const std::string& call) {
    if (FailureOf(call) != kSuccess) {
        throw std::runtime_error("the management service does not answer " + call);
    }
}

// --- Registry.

std::shared_ptr<MemoryKey> MemoryPlatform::KeyOf(KeyHandle handle) {
    if (handle >= kClassesRoot && handle <= kDynData) {
        std::shared_ptr<MemoryKey>& root = roots_[handle];
        if (root == nullptr) {
            root = std::make_shared<MemoryKey>();
        }
        return root;
    }
    const auto open = openKeys_.find(handle);
    return open == openKeys_.end() ? nullptr : open->second.key;
}

std::int32_t MemoryPlatform::KeyFor(KeyHandle handle, std::uint32_t access, std::shared_ptr<MemoryKey>& key) {
    key = KeyOf(handle);
    if (key == nullptr) {
        return kInvalidHandle;
    }
    const auto open = openKeys_.find(handle);
    const std::uint32_t granted = open == openKeys_.end() ? kAllAccess : open->second.access;
    return (granted & access) == access ? kSuccess : kAccessDenied;
}

KeyHandle MemoryPlatform::Handle(std::shared_ptr<MemoryKey> key, std::uint32_t access) {
    nextHandle_ += 4;
    openKeys_[nextHandle_] = {std::move(key), access};
    return nextHandle_;
}

std::int32_t MemoryPlatform::RegConnectRegistryA(const std::string& computer, KeyHandle root,
                                                 KeyHandle& result) {
    if (const std::int32_t code = FailureOf("RegConnectRegistryA"); code != kSuccess) {
        return code;
    }
    const auto found = computers_.find(computer);
    if (found == computers_.end()) {
        return kBadNetworkPath;
    }
    const auto key = found->second.find(root);
    if (key == found->second.end()) {
        return kInvalidHandle;
    }
    result = Handle(key->second, kAllAccess);
    return kSuccess;
}

std::int32_t MemoryPlatform::OpenAt(KeyHandle key, const std::string& subKey, KeyHandle& result,
                                    std::uint32_t access) {
    std::shared_ptr<MemoryKey> open = KeyOf(key);
    if (open == nullptr) {
        return kInvalidHandle;
    }
    for (std::string_view path = subKey; !path.empty();) {
        const MemoryKey::SubKey* found = open->FindSubKey(TakeComponent(path));
        if (found == nullptr) {
            return kFileNotFound;
        }
        open = found->key;
    }
    if (open->openResult != kSuccess) {
        return open->openResult;
    }
    result = Handle(std::move(open), access);
    return kSuccess;
}

std::int32_t MemoryPlatform::RegOpenKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t access,
                                           KeyHandle& result) {
    std::int32_t code = FailureOf("RegOpenKeyExA");
    if (code == kSuccess) {
        code = OpenAt(key, subKey, result, access);
    }
    keysOpened.push_back({key, subKey, access, code});
    return code;
}

std::int32_t MemoryPlatform::CreateAt(KeyHandle key, const std::string& subKey, KeyHandle& result,
                                      std::uint32_t access) {
    const std::shared_ptr<MemoryKey> parent = KeyOf(key);
    if (parent == nullptr) {
        return kInvalidHandle;
    }
    parent->Key(subKey);
    return OpenAt(key, subKey, result, access);
}

std::int32_t MemoryPlatform::RegCreateKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t access,
                                             KeyHandle& result) {
    std::int32_t code = FailureOf("RegCreateKeyExA");
    if (code == kSuccess) {
        code = CreateAt(key, subKey, result, access);
    }
    keysOpened.push_back({key, subKey, access, code});
    return code;
}

std::int32_t MemoryPlatform::RegCloseKey(KeyHandle key) {
    if (key >= kClassesRoot && key <= kDynData) {
        return kSuccess;
    }
    return openKeys_.erase(key) == 1 ? kSuccess : kInvalidHandle;
}

std::int32_t MemoryPlatform::RegQueryInfoKeyA(KeyHandle key, KeyInfo& info) {
    std::shared_ptr<MemoryKey> found;
    std::int32_t code = FailureOf("RegQueryInfoKeyA");
    if (code == kSuccess) {
        code = KeyFor(key, kKeyQueryValue, found);
    }
    if (code != kSuccess) {
        return code;
    }
    info = {static_cast<std::uint32_t>(found->subKeys_.size()), 0,
            static_cast<std::uint32_t>(found->values_.size()), 0};
    for (const MemoryKey::SubKey& subKey : found->subKeys_) {
        info.longestSubKeyName = std::max(info.longestSubKeyName, Utf16Length(subKey.name));
    }
    for (const MemoryKey::Value& value : found->values_) {
        info.longestValueName = std::max(info.longestValueName, Utf16Length(value.name));
    }
    return kSuccess;
}

std::int32_t MemoryPlatform::RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                           TextBuffer* keyClass) {
    std::shared_ptr<MemoryKey> found;
    std::int32_t code = FailureOf("RegEnumKeyExA");
    if (code == kSuccess) {
        code = KeyFor(key, kKeyEnumerateSubKeys, found);
    }
    if (code != kSuccess) {
        return code;
    }
    if (index >= found->subKeys_.size()) {
        return kNoMoreItems;
    }
    const MemoryKey::SubKey& subKey = found->subKeys_[index];
    const std::int32_t stored = Store(name, subKey.name);
    const std::int32_t classStored =
        keyClass == nullptr ? std::int32_t{kSuccess} : Store(*keyClass, subKey.key->className);
    return stored != kSuccess ? stored : classStored;
}

std::int32_t MemoryPlatform::RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                           std::uint32_t& type, std::byte* data, std::uint32_t& length) {
    std::shared_ptr<MemoryKey> found;
    std::int32_t code = FailureOf("RegEnumValueA");
    if (code == kSuccess) {
        code = KeyFor(key, kKeyQueryValue, found);
    }
    if (code != kSuccess) {
        return code;
    }
    if (index >= found->values_.size()) {
        return kNoMoreItems;
    }
    const MemoryKey::Value& value = found->values_[index];
    const std::int32_t stored = Store(name, value.name);
    return stored != kSuccess ? stored : StoreData(value, type, data, length);
}

std::int32_t MemoryPlatform::RegQueryValueExA(KeyHandle key, const std::string& name, std::uint32_t& type,
                                              std::byte* data, std::uint32_t& length) {
    std::shared_ptr<MemoryKey> found;
    std::int32_t code = FailureOf("RegQueryValueExA");
    if (code == kSuccess) {
        code = KeyFor(key, kKeyQueryValue, found);
    }
    if (code != kSuccess) {
        return code;
    }
    const MemoryKey::Value* value = found->FindValue(name);
    return value == nullptr ? std::int32_t{kFileNotFound} : StoreData(*value, type, data, length);
}

std::int32_t MemoryPlatform::RegSetValueExA(KeyHandle key, const std::string& name, std::uint32_t type,
                                            std::span<const std::byte> data) {
    std::shared_ptr<MemoryKey> found;
    std::int32_t code = FailureOf("RegSetValueExA");
    if (code == kSuccess) {
        code = KeyFor(key, kKeySetValue, found);
    }
    if (code == kSuccess) {
        found->SetData(name, type, data);
    }
    return code;
}

std::int32_t MemoryPlatform::LoadHive(KeyHandle root, const std::string& subKey, const std::string& file) {
    for (const std::string_view privilege : {"SeRestorePrivilege", "SeBackupPrivilege"}) {
        if (std::find(enabledPrivileges_.begin(), enabledPrivileges_.end(), privilege) ==
            enabledPrivileges_.end()) {
            return kAccessDenied;
        }
    }
    MemoryFile* found = Find(file);
    if (found == nullptr) {
        return kFileNotFound;
    }
    if (found->inUse) {
        return kSharingViolation;
    }
    if (found->hive == nullptr) {
        return kNotRegistryFile;
    }
    MemoryKey& key = Root(root);
    if (key.FindSubKey(subKey) != nullptr) {
        return kAccessDenied;
    }
    key.AddSubKey(subKey, found->hive);
    found->inUse = true;
    return kSuccess;
}

std::int32_t MemoryPlatform::RegLoadKeyA(KeyHandle root, const std::string& subKey, const std::string& file) {
    std::int32_t code = FailureOf("RegLoadKeyA");
    if (code == kSuccess) {
        code = LoadHive(root, subKey, file);
    }
    hivesLoaded.push_back({root, subKey, file, code});
    return code;
}

void MemoryPlatform::EnablePrivileges(std::span<const std::string> names) {
    privilegesEnabled.emplace_back(names.begin(), names.end());
    if (FailureOf("EnablePrivileges") == kSuccess) {
        enabledPrivileges_.insert(enabledPrivileges_.end(), names.begin(), names.end());
    }
}

// --- Accounts and folders.

std::vector<ProcessOwner> MemoryPlatform::ShellProcessOwners() {
    ThrowIfManagementFails("ShellProcessOwners");
    return shellProcessOwners;
}

std::vector<GroupUser> MemoryPlatform::GroupUsers() {
    ThrowIfManagementFails("GroupUsers");
    return groupUsers;
}

std::vector<std::vector<std::string>> MemoryPlatform::UserAccountNames(std::span<const std::string> sids) {
    sidsLookedUp.emplace_back(sids.begin(), sids.end());
    ThrowIfManagementFails("UserAccountNames");
    std::vector<std::vector<std::string>> names;
    for (const std::string& sid : sids) {
        const auto found = accountNames.find(sid);
        names.push_back(found == accountNames.end() ? std::vector<std::string>() : found->second);
    }
    return names;
}

std::string MemoryPlatform::EnvironmentVariable(const std::string& name) {
    const auto variable = environment.find(UpperCase(name));
    return variable == environment.end() ? std::string() : variable->second;
}

std::string MemoryPlatform::SpecialFolderPath(int csidl) {
    const auto folder = specialFolders.find(csidl);
    return folder == specialFolders.end() ? std::string() : folder->second;
}

std::vector<DirectoryEntry> MemoryPlatform::ListDirectory(const std::string& folder) {
    const MemoryFile* listed = Find(folder);
    std::vector<DirectoryEntry> entries;
    if (listed == nullptr || !listed->readable) {
        return entries;
    }
    for (const MemoryFile& file : files_) {
        if (EqualNoCase(FolderOf(file.path), listed->path)) {
            entries.push_back({NameOf(file.path), file.attributes});
        }
    }
    return entries;
}

std::optional<DirectoryEntry> MemoryPlatform::FindEntry(const std::string& path) {
    const MemoryFile* file = Find(path);
    if (file == nullptr) {
        return std::nullopt;
    }
    return DirectoryEntry{NameOf(file->path), file->attributes};
}

std::unique_ptr<InputFile> MemoryPlatform::OpenFile(const std::string& path) {
    filesOpened.push_back(path);
    const MemoryFile* file = Find(path);
    if (file == nullptr || !file->readable || (file->attributes & kAttributeDirectory) != 0) {
        return nullptr;
    }
    return file->open ? file->open() : std::make_unique<MemoryInputFile>(*file);
}

class MemoryOutputFile : public OutputFile {
  public:
    MemoryOutputFile(MemoryPlatform& platform, MemoryFile& file, std::string path)
        : platform_(platform), file_(file), path_(std::move(path)) {}

    void Write(std::string_view bytes) override {
        const auto room =
            static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), platform_.freeBytes));
        const auto stored = std::as_bytes(std::span(bytes)).first(room);
        file_.bytes.insert(file_.bytes.end(), stored.begin(), stored.end());
        platform_.freeBytes -= room;
        if (room < bytes.size()) {
            throw PathFileAccessError(path_);
        }
    }
    void Close() override {
        if (platform_.FailureOf("Close") != kSuccess) {
            throw PathFileAccessError(path_);
        }
    }

  private:
    MemoryPlatform& platform_;
    MemoryFile& file_;
    std::string path_;
};

std::unique_ptr<OutputFile> MemoryPlatform::CreateOutputFile(const std::string& path, Existing existing) {
    const MemoryFile* before = Find(path);
    if (before != nullptr && existing == Existing::Keep) {
        throw FileAlreadyExistsError(path);
    }
    const std::string folder = FolderOf(Clean(path));
    if (path.empty() || FailureOf("CreateOutputFile") != kSuccess ||
        (before != nullptr && (before->attributes & kAttributeDirectory) != 0) ||
        (!folder.empty() && Find(folder) == nullptr)) {
        throw PathFileAccessError(path);
    }
    return std::make_unique<MemoryOutputFile>(*this, AddFile(path), path);
}

void MemoryPlatform::CreateOutputFolder(const std::string& path) {
    const MemoryFile* before = Find(path);
    const std::string folder = FolderOf(Clean(path));
    if (path.empty() || FailureOf("CreateOutputFolder") != kSuccess ||
        (before != nullptr && (before->attributes & kAttributeDirectory) == 0) ||
        (!folder.empty() && Find(folder) == nullptr)) {
        throw PathFileAccessError(path);
    }
    if (before == nullptr) {
        AddFolder(path);
    }
}

int MemoryPlatform::ShellExecuteA(const std::string& verb, const std::string& file, const std::string& folder,
                                  int showCommand) {
    executed.push_back({verb, file, folder, showCommand});
    return shellExecuteResult;
}

bool MemoryPlatform::StartProgram(const std::string& commandLine) {
    programsStarted.push_back(commandLine);
    return FailureOf("StartProgram") == kSuccess;
}

// --- Shortcuts.

class MemoryShellLink : public ShellLink {
  public:
    explicit MemoryShellLink(MemoryPlatform& platform) : platform_(platform) {}

    bool Load(const std::string& path) override {
        const MemoryFile* file = platform_.Find(path);
        if (!Works("Load") || file == nullptr || !file->readable || !file->shortcut) {
            return false;
        }
        fields_ = *file->shortcut;
        return true;
    }
    bool GetPath(TextBuffer& path, std::uint32_t flags) override {
        const bool network = (flags & kPathUnc) != 0 && !fields_.networkTarget.empty();
        return Get("GetPath", path, network ? fields_.networkTarget : fields_.target);
    }
    bool GetWorkingDirectory(TextBuffer& folder) override {
        return Get("GetWorkingDirectory", folder, fields_.workingDirectory);
    }
    bool GetArguments(TextBuffer& arguments) override {
        return Get("GetArguments", arguments, fields_.arguments);
    }
    bool GetDescription(TextBuffer& description) override {
        return Get("GetDescription", description, fields_.description);
    }
    bool GetHotkey(std::uint16_t& hotkey) override { return Set("GetHotkey", hotkey, fields_.hotkey); }
    bool GetIconLocation(TextBuffer& file, std::int32_t& index) override {
        return Get("GetIconLocation", file, fields_.iconFile) &&
               Set("GetIconLocation", index, fields_.iconIndex);
    }
    bool GetShowCmd(std::int32_t& showCommand) override {
        return Set("GetShowCmd", showCommand, fields_.showCommand);
    }

    bool SetPath(const std::string& path) override { return Set("SetPath", fields_.target, path); }
    bool SetWorkingDirectory(const std::string& folder) override {
        return Set("SetWorkingDirectory", fields_.workingDirectory, folder);
    }
    bool SetArguments(const std::string& arguments) override {
        return Set("SetArguments", fields_.arguments, arguments);
    }
    bool SetDescription(const std::string& description) override {
        return Set("SetDescription", fields_.description, description);
    }
    bool SetHotkey(std::uint16_t hotkey) override { return Set("SetHotkey", fields_.hotkey, hotkey); }
    bool SetIconLocation(const std::string& file, std::int32_t index) override {
        return Set("SetIconLocation", fields_.iconFile, file) &&
               Set("SetIconLocation", fields_.iconIndex, index);
    }
    bool SetShowCmd(std::int32_t showCommand) override {
        return Set("SetShowCmd", fields_.showCommand, showCommand);
    }
    bool Save(const std::string& path) override {
        if (!Works("Save") || platform_.Find(FolderOf(path)) == nullptr) {
            return false;
        }
        platform_.AddShortcut(path, fields_);
        return true;
    }

  private:
    [[nodiscard]] bool Works(const std::string& call) { return platform_.FailureOf(call) == kSuccess; }
    bool Get(const std::string& call, TextBuffer& buffer, const std::string& text) {
        if (!Works(call)) {
            return false;
        }
        // The shell cuts what does not fit and calls that a success.
        Store(buffer, text);
        return true;
    }
    template <typename T>
    bool Set(const std::string& call, T& to, const T& from) {
        if (!Works(call)) {
            return false;
        }
        to = from;
        return true;
    }

    MemoryPlatform& platform_;
    MemoryShortcut fields_;
};

std::unique_ptr<ShellLink> MemoryPlatform::CreateShellLink() {
    return std::make_unique<MemoryShellLink>(*this);
}

// --- Text, time and dates.

std::string MemoryPlatform::DecodeAnsi(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        AppendCharacter(text, code >= 0x80 && code < 0xA0 ? kWindows1252.at(code - 0x80U) : code);
    }
    return text;
}

std::string MemoryPlatform::EncodeAnsi(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const char32_t character = TakeCharacter(text);
        const auto* high = std::find(kWindows1252.begin(), kWindows1252.end(), character);
        if (high != kWindows1252.end()) {
            bytes += static_cast<char>(0x80 + (high - kWindows1252.begin()));
        } else {
            const bool single = character < 0x80 || (character >= 0xA0 && character <= 0xFF);
            bytes += single ? static_cast<char>(character) : '?';
        }
    }
    return bytes;
}

std::optional<FileTime> MemoryPlatform::FileTimeToLocalFileTime(const FileTime& time) {
    const std::optional<std::int64_t> units = UnitsOf(time);
    const std::int64_t bias = biasMinutes * 60 * kUnitsPerSecond;
    if (FailureOf("FileTimeToLocalFileTime") != kSuccess || !units || *units < bias ||
        (bias < 0 && *units > std::numeric_limits<std::int64_t>::max() + bias)) {
        return std::nullopt;
    }
    const auto local = static_cast<std::uint64_t>(*units - bias);
    return FileTime{static_cast<std::uint32_t>(local), static_cast<std::uint32_t>(local >> 32U)};
}

std::optional<SystemTime> MemoryPlatform::FileTimeToSystemTime(const FileTime& time) {
    const std::optional<std::int64_t> units = UnitsOf(time);
    if (FailureOf("FileTimeToSystemTime") != kSuccess || !units) {
        return std::nullopt;
    }
    const std::int64_t seconds = *units / kUnitsPerSecond;
    const std::chrono::sys_days first(std::chrono::year(1601) / 1 / 1);
    const std::chrono::year_month_day day(first + std::chrono::days(seconds / kSecondsPerDay));
    const auto second = static_cast<int>(seconds % kSecondsPerDay);
    return SystemTime{int{day.year()},
                      static_cast<int>(unsigned{day.month()}),
                      static_cast<int>(unsigned{day.day()}),
                      second / 3600,
                      second / 60 % 60,
                      second % 60,
                      static_cast<int>(*units % kUnitsPerSecond / 10000)};
}

std::string MemoryPlatform::DateToText(double date, DateForm form) {
    if (writeDate) {
        return writeDate(date, form);
    }
    const std::optional<DayAndSecond> split = Split(date);
    if (!split) {
        return {};
    }
    switch (form) {
        case DateForm::ShortDate:
            return DayText(split->day);
        case DateForm::LongTime:
            return TimeText(split->second);
        case DateForm::General:
            break;
    }
    return DayText(split->day) + (split->second == 0 ? std::string() : " " + TimeText(split->second));
}

std::optional<double> MemoryPlatform::TextToDate(const std::string& text) {
    static const std::regex kForm(
        "(?:(\\d{1,2})/(\\d{1,2})/(\\d{4}))?(?:(?:^| )(\\d{1,2}):(\\d\\d):(\\d\\d) (AM|PM))?");
    std::smatch match;
    if (text.empty() || !std::regex_match(text, match, kForm)) {
        return std::nullopt;
    }
    double days = 0;
    if (match[1].matched) {
        const std::chrono::year_month_day day(std::chrono::year(std::stoi(match[3])),
                                              std::chrono::month(static_cast<unsigned>(std::stoi(match[1]))),
                                              std::chrono::day(static_cast<unsigned>(std::stoi(match[2]))));
        if (!day.ok()) {
            return std::nullopt;
        }
        days = static_cast<double>((std::chrono::sys_days(day) - FirstDay()).count());
    }
    double time = 0;
    if (match[4].matched) {
        const int hour = std::stoi(match[4]);
        const int minute = std::stoi(match[5]);
        const int second = std::stoi(match[6]);
        if (hour < 1 || hour > 12 || minute > 59 || second > 59) {
            return std::nullopt;
        }
        const int hourOfDay = hour % 12 + (match[7] == "PM" ? 12 : 0);
        time = static_cast<double>(hourOfDay * 3600 + minute * 60 + second) / kSecondsPerDay;
    }
    return days < 0 ? days - time : days + time;
}

}  // namespace ostrevin
