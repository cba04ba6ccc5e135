// The SAM hive. Facts on its binary values: as documented in public by forensic literature ("SAM" value "V":
// seventeen entries of offset, length and a number, offsets counted from the end of the entries).
#include <algorithm>
#include <array>
#include <cstdio>
#include <span>

#include "tools/sample-volume/Machine.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/SampleText.h"
#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

constexpr std::uint32_t kAdministratorRid = 500;
constexpr std::uint32_t kUsersGroup = 513;
constexpr std::uint64_t kNever = 0x7FFFFFFFFFFFFFFF;

std::string RidKey(std::uint32_t rid) {
    std::array<char, 9> text{};
    std::snprintf(text.data(), text.size(), "%08X", rid);
    return text.data();
}

/// A value of entries that point into the data behind them.
class EntryTable {
  public:
    explicit EntryTable(std::size_t entries) : entries_(entries) {}

    void Set(std::size_t entry, std::span<const std::byte> data, std::uint32_t number = 0) {
        entries_[entry] = {data_.Offset(), Size32(data.size()), number};
        data_.Bytes(data);
        data_.Align(4);
    }

    void SetText(std::size_t entry, std::string_view utf8) {
        ByteBuffer text;
        text.Utf16(ToUtf16(utf8));
        Set(entry, text.View());
    }

    /// The entries, then the data. Entries that were not set are empty ones at the end.
    [[nodiscard]] ByteBuffer Bytes() const {
        ByteBuffer out;
        for (const Entry& entry : entries_) {
            out.U32(entry.length != 0 ? entry.offset : data_.Offset());
            out.U32(entry.length);
            out.U32(entry.number);
        }
        out.Bytes(data_.View());
        return out;
    }

  private:
    struct Entry {
        std::uint32_t offset = 0;
        std::uint32_t length = 0;
        std::uint32_t number = 0;
    };
    std::vector<Entry> entries_;
    ByteBuffer data_;
};

constexpr std::uint32_t kDescriptorNumber = 0x00010002;

// Full access for Administrators, reading for everyone, as the accounts' own descriptors begin.
std::vector<std::byte> AccountDescriptor() {
    const std::vector<std::byte> administrators = SidBytes("S-1-5-32-544");
    const std::vector<std::byte> everyone = SidBytes("S-1-1-0");
    ByteBuffer list;
    list.U16(2);
    list.U16(0);  // the size, below
    list.U32(2);
    const auto entry = [&](std::uint32_t access, const std::vector<std::byte>& sid) {
        list.U16(0);
        list.U16(Size16(8 + sid.size()));
        list.U32(access);
        list.Bytes(sid);
    };
    entry(0x000F07FF, administrators);
    entry(0x0002035B, everyone);
    list.PutU16(2, Size16(list.Size()));

    constexpr std::uint32_t kHeader = 20;
    ByteBuffer out;
    out.U16(1);
    out.U16(0x8004);
    out.U32(kHeader + Size32(list.Size()));
    out.U32(kHeader + Size32(list.Size()));
    out.U32(0);
    out.U32(kHeader);
    out.Bytes(list.View());
    out.Bytes(administrators);
    return out.Take();
}

std::vector<std::byte> VariableData(const Account& account) {
    enum Field : std::size_t {
        kDescriptor,
        kName,
        kFullName,
        kComment,
        kHours = 11,
        kGroups,
        kHashes,
        kFields = 17
    };
    EntryTable table(kFields);
    table.Set(kDescriptor, AccountDescriptor(), kDescriptorNumber);
    table.SetText(kName, account.name);
    table.SetText(kFullName, account.fullName);
    table.SetText(kComment, account.comment);
    const std::vector<std::byte> allHours(21, std::byte{0xFF});
    table.Set(kHours, allHours, 168);
    ByteBuffer groups;
    groups.U32(kUsersGroup);
    groups.U32(7);
    table.Set(kGroups, groups.View(), 1);
    ByteBuffer noHash;  // no password: the header of a hash alone
    noHash.U32(0x00010001);
    for (std::size_t field = kHashes; field < kFields; ++field) {
        table.Set(field, noHash.View());
    }
    return table.Bytes().Take();
}

std::vector<std::byte> FixedData(const Account& account) {
    constexpr std::uint16_t kNormal = 0x0210;  // an account whose password never expires
    constexpr std::uint16_t kDisabled = 0x0001;
    ByteBuffer out;
    out.U32(0x00010002);
    out.U32(0);
    out.U64(account.lastLogon);
    out.U64(0);
    out.U64(LastShutdown() - 400 * kDay);  // the password was set
    out.U64(kNever);
    out.U64(0);
    out.U32(account.rid);
    out.U32(kUsersGroup);
    out.U16(account.disabled ? kNormal | kDisabled : kNormal);
    out.U16(0);
    out.U32(0);
    out.U16(0);
    out.U16(account.logons);
    out.PadTo(0x50);
    return out.Take();
}

std::vector<std::byte> DomainData(std::string_view sid) {
    EntryTable table(4);
    table.Set(0, AccountDescriptor(), kDescriptorNumber);
    table.Set(1, SidBytes(sid));
    return table.Bytes().Take();
}

std::vector<std::byte> AliasData(std::uint32_t rid, std::string_view name, std::string_view comment,
                                 std::span<const std::string> members) {
    EntryTable table(4);
    table.Set(0, AccountDescriptor(), kDescriptorNumber);
    table.SetText(1, name);
    table.SetText(2, comment);
    ByteBuffer sids;
    for (const std::string& member : members) {
        sids.Bytes(SidBytes(member));
    }
    table.Set(3, sids.View(), Size32(members.size()));
    ByteBuffer out;
    out.U32(rid);
    out.Bytes(table.Bytes().View());
    return out.Take();
}

void AddBuiltin(HiveKey& domains) {
    HiveKey& builtin = domains.Key("Builtin");
    builtin.SetBinary("V", DomainData("S-1-5-32"));
    HiveKey& aliases = builtin.Key("Aliases");
    const auto add = [&](std::uint32_t rid, const std::string& name, std::string_view comment,
                         std::span<const std::string> members) {
        aliases.Key(RidKey(rid)).SetBinary("C", AliasData(rid, name, comment, members));
        aliases.Key("Names\\" + name).Set("", rid, {});
    };
    const std::array administrators = {SidOf(kMachineSid, kAdministratorRid), SidOf(kMachineSid, kAnnaRid),
                                       SidOf(kDomainSid, kKellerRid)};
    const std::array users = {SidOf(kMachineSid, kFelixRid), SidOf(kMachineSid, kSvetlanaRid)};
    add(544, "Administrators", "Full access to the computer", administrators);
    add(545, "Users", "Everyday work", users);
}

}  // namespace

HiveKey AccountDatabase(const std::vector<Account>& accounts) {
    HiveKey root;
    root.name = "SAM";
    HiveKey& domains = root.Key("SAM\\Domains");
    HiveKey& own = domains.Key("Account");
    own.SetBinary("V", DomainData(kMachineSid));
    HiveKey& users = own.Key("Users");
    users.Set("", Size32(accounts.size()), {});
    for (const Account& account : accounts) {
        HiveKey& user = users.AddKey(RidKey(account.rid));
        user.SetBinary("F", FixedData(account));
        user.SetBinary("V", VariableData(account));
        // The default value's type is the identifier.
        users.Key("Names").AddKey(account.name).Set("", account.rid, {});
    }
    AddBuiltin(domains);
    return root;
}

}  // namespace ostrevin::samples
