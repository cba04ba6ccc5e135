#include "platform/volume/documents/OfficePackage.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform/Text.h"
#include "platform/volume/documents/FileBytes.h"
#include "platform/volume/documents/ZipDirectory.h"

namespace ostrevin::documents {
namespace {

constexpr char kContentTypes[] = "[Content_Types].xml";
constexpr std::string_view kMimeType = "mimetype";

/// Whether a part is one by which an archive becomes a program of a Java or Android machine.
bool IsOfProgram(const ZipEntry& entry) {
    const std::string name = UpperCase(entry.name);
    return name == "META-INF/MANIFEST.MF" || name.ends_with(".CLASS") || name.ends_with(".DEX") ||
           name == "ANDROIDMANIFEST.XML";
}

/// A document and the directory that a desktop judges it by: all parts are in it, and the first of them is
/// the first in the file, too.
struct Package {
    std::vector<ZipEntry> entries;
    ZipLocalHeader first;
};

std::optional<Package> ReadPackage(InputFile& file) {
    constexpr std::uint16_t kJavaMark = 0xCAFE;  // the extra field by which an archive of Java is known
    std::optional<std::vector<ZipEntry>> entries = ReadZipDirectory(file);
    if (!entries || std::any_of(entries->begin(), entries->end(), IsOfProgram)) {
        return std::nullopt;
    }
    const auto first = std::find_if(entries->begin(), entries->end(),
                                    [](const ZipEntry& entry) { return entry.offset == 0; });
    std::optional<ZipLocalHeader> header =
        first == entries->end() ? std::nullopt : ReadZipLocalHeader(file, *first);
    if (!header || header->name != first->name || Number16(header->extra, 0) == kJavaMark) {
        return std::nullopt;
    }
    return Package{std::move(*entries), std::move(*header)};
}

}  // namespace

bool IsOfficeOpenXml(InputFile& file, std::string_view mainType) {
    constexpr std::size_t kMost = std::size_t{4} << 20U;  // many times what a document of 10,000 parts needs
    const std::optional<Package> package = ReadPackage(file);
    if (!package || UpperCase(package->first.name).starts_with("META-INF/")) {
        return false;
    }
    const auto list = std::find_if(package->entries.begin(), package->entries.end(),
                                   [](const ZipEntry& entry) { return entry.name == kContentTypes; });
    const std::optional<std::string> types =
        list == package->entries.end() ? std::nullopt : ReadZipEntry(file, *list, kMost);
    return types && types->find(mainType) != std::string::npos &&
           UpperCase(*types).find("MACROENABLED") == std::string::npos;
}

bool IsOpenDocument(InputFile& file, std::initializer_list<std::string_view> types) {
    const std::optional<Package> package = ReadPackage(file);
    if (!package || package->first.name != kMimeType || !package->first.extra.empty()) {
        return false;
    }
    const auto first = std::find_if(package->entries.begin(), package->entries.end(),
                                    [](const ZipEntry& entry) { return entry.offset == 0; });
    const std::optional<std::string> type =
        first->method == 0 ? ReadZipEntry(file, *first, 100) : std::nullopt;
    return type && std::find(types.begin(), types.end(), *type) != types.end();
}

}  // namespace ostrevin::documents
