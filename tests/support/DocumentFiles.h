// Documents of the kinds that are opened, made up byte by byte.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ostrevin::documents {

/// A number, the lowest byte first.
std::string Little(std::uint64_t number, int bytes);
std::string FromHex(std::string_view digits);

/// A file in a ZIP file.
struct Part {
    std::string name;
    std::string bytes;
    int method = 0;
    std::string extra = {};
    std::string localName = {};  ///< another one than in the directory
};

/// before is how many bytes will stand before the file.
std::string Zip(const std::vector<Part>& parts, const std::string& comment = {}, std::size_t before = 0);

/// What makes a ZIP file a program.
const Part kManifest = {"META-INF/MANIFEST.MF", "Main-Class: A\n"};
const Part kClass = {"A.class", "\xCA\xFE\xBA\xBE"};
std::string Jar();

/// The list of types of an office file whose main part is of this type.
std::string ContentTypes(const std::string& mainType);
std::string OpenXml(const std::string& mainType, std::vector<Part> more = {});
std::string OpenDocument(const std::string& type, std::vector<Part> more = {});

/// A compound file of sectors of 512 bytes: the table of chains in sector 0, the directory from sector 1 on.
std::string Compound(const std::vector<std::string>& streams, std::string_view rootClass = {});

/// By its ending, a file of each kind that is opened.
const std::map<std::string, std::string>& Documents();

}  // namespace ostrevin::documents
