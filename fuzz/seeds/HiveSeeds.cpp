// Writes the inputs from which the hive's fuzz target starts.
#include <array>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/HiveInput.h"
#include "fuzz/seeds/Seeds.h"
#include "platform/volume/regf/Hive.h"
#include "tests/support/BytesFile.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/DirtyHive.h"
#include "tools/writers/HiveWriter.h"

namespace ostrevin::fuzz {
namespace {

using samples::HiveKey;
using samples::HiveOptions;
using File = std::vector<std::byte>;
using Parts = std::array<File, kHiveParts>;

void Write(const std::string& folder, const std::string& name, const Parts& parts) {
    samples::ByteBuffer input;
    for (const std::size_t part : {kPrimary, kLog, kLog1}) {
        input.U32(samples::Size32(parts[part].size()));
    }
    for (const File& part : parts) {
        input.Bytes(part);
    }
    WriteSeed(folder, name, input.View());
}

/// Writes a dirty hive. A seed of which the reader takes no log, for a wrong hash say, would lead the fuzzer
/// nowhere.
void WriteDirty(const std::string& folder, const std::string& name, const Parts& parts) {
    const auto file = [](const File& bytes) { return std::make_unique<BytesFile>(bytes); };
    const auto hive =
        regf::Hive::Open(file(parts[kPrimary]), {file(parts[kLog]), file(parts[kLog1]), file(parts[kLog2])});
    if (hive->HowRecovered() != regf::Recovery::FromLogs) {
        throw std::runtime_error("the reader takes no log of the seed " + name);
    }
    Write(folder, name, parts);
}

/// A hive with every kind of name and data; the more, the larger n is.
HiveKey Tree(int n) {
    HiveKey root;
    root.name = "Root";
    root.className = "Class";
    root.SetString("", "default");
    root.SetDword("Number", 42);
    root.SetString("\u0416", "text");
    HiveKey& deep = root.Key("Software\\Microsoft\\Windows\\\u0416\u0443\u043A");
    for (int i = 0; i < n; ++i) {
        deep.Key("Key " + std::to_string(i)).SetBinary("Data", File(100, std::byte{1}));
    }
    return root;
}

File Hive(int n, const HiveOptions& options) {
    return samples::WriteHive(Tree(n), options);
}

void WriteSeeds(const std::string& folder) {
    const HiveOptions usual;
    for (const auto leaf : {samples::SubKeyLeaf::Li, samples::SubKeyLeaf::Lf, samples::SubKeyLeaf::Lh}) {
        HiveOptions options;
        options.leaf = leaf;
        options.leafElements = 3;
        Write(folder, "leaf-" + std::to_string(static_cast<int>(leaf)), {Hive(8, options)});
    }
    for (const std::uint32_t version : {1U, 2U, 3U, 6U}) {
        HiveOptions options;
        options.minorVersion = version;
        options.compressNames = false;
        options.inlineData = false;
        Write(folder, "version-" + std::to_string(version), {Hive(4, options)});
    }
    HiveKey big = Tree(0);
    big.SetBinary("Big", File(40000, std::byte{2}));
    Write(folder, "big-data", {samples::WriteHive(big, usual)});

    const samples::DirtyHive dirty = samples::MakeDirtyHive(Hive(4, usual), Hive(20, usual), 1);
    WriteDirty(folder, "dirty-vector", {dirty.primary, dirty.log});
    WriteDirty(folder, "dirty-vector-1", {dirty.primary, {}, dirty.log});
    File damaged = dirty.primary;
    damaged[0] = std::byte{0};
    WriteDirty(folder, "dirty-base-block", {damaged, dirty.log});
    const std::vector<File> states = {Hive(2, usual), Hive(6, usual), Hive(30, usual)};
    const samples::DirtyHive entries = samples::MakeDirtyHiveWithEntries(states, 1);
    WriteDirty(folder, "dirty-entries", {entries.primary, {}, entries.log, entries.log2});
    damaged = entries.primary;
    damaged[0] = std::byte{0};
    WriteDirty(folder, "dirty-entries-base-block", {damaged, {}, entries.log, entries.log2});
}

}  // namespace
}  // namespace ostrevin::fuzz

int main(int argumentCount, char** arguments) {
    return ostrevin::fuzz::SeedsMain(argumentCount, arguments, ostrevin::fuzz::WriteSeeds);
}
