#include "tests/support/DocumentFiles.h"

namespace ostrevin::documents {
namespace {

using namespace std::string_view_literals;

std::string DirectoryEntryOf(std::string_view name, char type, std::string_view rootClass) {
    std::string entry;
    for (const char character : name) {
        entry += {character, '\0'};
    }
    entry.resize(64, '\0');
    entry += Little(name.size() * 2 + 2, 2) + type + '\1' + Little(~0ULL, 8) + Little(~0U, 4);
    entry += rootClass;
    entry.resize(128, '\0');
    return entry;
}

/// Sounds and films.
std::map<std::string, std::string> Recordings() {
    const std::string mpegVideo("\0\0\1\xBA more"sv);
    const std::string windowsMedia = FromHex("3026B2758E66CF11A6D900AA0062CE6C");
    const std::string ogg("OggS\0\2"sv);
    const std::string quickTime(
        "\0\0\0\x14"
        "ftypqt  "sv);
    return {{"aac", FromHex("FFF15080")},
            {"ac3", FromHex("0B77")},
            {"aif", "FORM1234AIFF"},
            {"aiff", "FORM1234AIFC"},
            {"ape", "MAC 1234"},
            {"asf", windowsMedia},
            {"au", ".snd1234"},
            {"avi", "RIFF1234AVI LIST"},
            {"divx", "RIFF1234AVI LIST"},
            {"flac", "fLaC1234"},
            {"flv", "FLV\1"},
            {"m1v", std::string("\0\0\1\xB3"sv)},
            {"m2v", std::string("\0\0\1\xB3"sv)},
            {"m4a", std::string("\0\0\0\x14"
                                "ftypM4A "sv)},
            {"m4v", quickTime},
            {"mid", std::string("MThd\0\0\0\6"sv)},
            {"midi", std::string("MThd\0\0\0\6"sv)},
            {"mkv", FromHex("1A45DFA3")},
            {"mov", std::string("\0\0\0\x14moov"sv)},
            {"mp2", FromHex("FFFD9004")},
            {"mp3", FromHex("FFFB9064")},
            {"mp4", std::string("\0\0\0\x14"
                                "ftypisom"sv)},
            {"mpe", mpegVideo},
            {"mpeg", mpegVideo},
            {"mpg", mpegVideo},
            {"oga", ogg},
            {"ogg", ogg},
            {"ogm", ogg},
            {"ogv", ogg},
            {"opus", ogg},
            {"qt", quickTime},
            {"ra", ".ra\xFD"},
            {"rm", ".RMF"},
            {"rmi", "RIFF1234RMIDdata"},
            {"snd", ".snd1234"},
            {"vob", mpegVideo},
            {"wav", "RIFF1234WAVEfmt "},
            {"wma", windowsMedia},
            {"wmv", windowsMedia}};
}

}  // namespace

std::string Little(std::uint64_t number, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(number);
        number >>= 8U;
    }
    return text;
}

std::string FromHex(std::string_view digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    }
    return bytes;
}

std::string Zip(const std::vector<Part>& parts, const std::string& comment, std::size_t before) {
    std::string file;
    std::string directory;
    for (const Part& part : parts) {
        const std::string& localName = part.localName.empty() ? part.name : part.localName;
        const std::string common = Little(20, 2) + Little(0, 2) +
                                   Little(static_cast<unsigned>(part.method), 2) + Little(0, 8) +
                                   Little(part.bytes.size(), 4) + Little(part.bytes.size(), 4);
        for (const std::string& field :
             {std::string("PK\1\2"), Little(20, 2), common, Little(part.name.size(), 2), Little(0, 12),
              Little(file.size() + before, 4), part.name}) {
            directory += field;
        }
        for (const std::string& field : {std::string("PK\3\4"), common, Little(localName.size(), 2),
                                         Little(part.extra.size(), 2), localName, part.extra, part.bytes}) {
            file += field;
        }
    }
    return file + directory + "PK\5\6" + Little(0, 4) + Little(parts.size(), 2) + Little(parts.size(), 2) +
           Little(directory.size(), 4) + Little(file.size() + before, 4) + Little(comment.size(), 2) +
           comment;
}

std::string Jar() {
    return Zip({kManifest, kClass});
}

std::string ContentTypes(const std::string& mainType) {
    return "<Types><Override PartName=\"/m.xml\" ContentType=\"application/vnd." + mainType +
           "+xml\"/></Types>";
}

std::string OpenXml(const std::string& mainType, std::vector<Part> more) {
    std::vector<Part> parts = {
        {"[Content_Types].xml", ContentTypes("openxmlformats-officedocument." + mainType + ".main")},
        {"_rels/.rels", "<Relationships/>"}};
    parts.insert(parts.end(), more.begin(), more.end());
    return Zip(parts);
}

std::string OpenDocument(const std::string& type, std::vector<Part> more) {
    std::vector<Part> parts = {{"mimetype", "application/vnd." + type},
                               {"META-INF/manifest.xml", "<manifest/>"},
                               {"content.xml", "<content/>"}};
    parts.insert(parts.end(), more.begin(), more.end());
    return Zip(parts);
}

std::string Compound(const std::vector<std::string>& streams, std::string_view rootClass) {
    std::string directory = DirectoryEntryOf("Root Entry", 5, rootClass);
    for (const std::string& stream : streams) {
        directory += DirectoryEntryOf(stream, 2, {});
    }
    directory.resize((directory.size() + 511) / 512 * 512, '\0');
    const std::size_t sectors = directory.size() / 512;
    std::string header(FromHex("D0CF11E0A1B11AE1"));
    header.resize(24, '\0');
    header += FromHex("3E000300FEFF09000600") + Little(0, 10) + Little(1, 4) + Little(1, 4) + Little(0, 8) +
              Little(4096, 4) + Little(0xFFFFFFFE, 4) + Little(0, 4) + Little(0xFFFFFFFE, 4) + Little(0, 4);
    header += Little(0, 4);  // the table of chains is sector 0
    header.resize(512, '\xFF');
    std::string chains = Little(0xFFFFFFFD, 4);
    for (std::size_t i = 1; i <= sectors; ++i) {
        chains += Little(i < sectors ? i + 1 : 0xFFFFFFFE, 4);
    }
    chains.resize(512, '\xFF');
    return header + chains + directory;
}

const std::map<std::string, std::string>& Documents() {
    static const std::map<std::string, std::string> documents = [] {
        std::map<std::string, std::string> all = {
            {"bmp", "BM" + Little(58, 4) + Little(0, 4) + Little(54, 4) + Little(40, 4)},
            {"csv", "a,b\r\n1,2\r\n"},
            {"dib", Little(40, 4) + Little(1, 4) + Little(1, 4) + Little(1, 2) + Little(24, 2)},
            {"doc", Compound({"\1CompObj", "WordDocument", "1Table", "Data", "\5SummaryInformation"})},
            {"docx", OpenXml("wordprocessingml.document")},
            {"emf", Little(1, 4) + std::string(36, '\0') + " EMF"},
            {"gif", "GIF89a"},
            {"ico", std::string("\0\0\1\0\1\0"sv)},
            {"jfif", FromHex("FFD8FFE0")},
            {"jpe", FromHex("FFD8FFE1")},
            {"jpeg", FromHex("FFD8FFDB")},
            {"jpg", FromHex("FFD8FFE0")},
            {"log", "first line\n"},
            {"odg", OpenDocument("oasis.opendocument.graphics")},
            {"odp", OpenDocument("oasis.opendocument.presentation")},
            {"ods", OpenDocument("oasis.opendocument.spreadsheet")},
            {"odt", OpenDocument("oasis.opendocument.text")},
            {"pbm", "P4\n8 1\n\xFF"},
            {"pcx", FromHex("0A050108")},
            {"pdf", "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n1 0 obj\n"},
            {"pgm", "P2 1 1 255 7"},
            {"png", FromHex("89504E470D0A1A0A")},
            {"pnm", "P6\n1 1 255\n123"},
            {"ppm", "P3 1 1 255 7 7 7"},
            {"pps", Compound({"PowerPoint Document", "Current User"})},
            {"ppt", Compound({"Current User", "Pictures", "PowerPoint Document"})},
            {"pptx", OpenXml("presentationml.presentation")},
            {"psd", std::string("8BPS\0\1"sv)},
            {"rtf", "{\\rtf1\\ansi text}"},
            {"sxc", OpenDocument("sun.xml.calc")},
            {"sxi", OpenDocument("sun.xml.impress")},
            {"sxw", OpenDocument("sun.xml.writer")},
            {"tif", std::string("II*\0"sv)},
            {"tiff", std::string("MM\0*"sv)},
            {"txt", "Dear Anna,\r\n\tthe box \x80 5 & more < that.\r\n\x1A"},
            {"webp", "RIFF1234WEBPVP8 "},
            {"wmf", FromHex("D7CDC69A0000")},
            {"wps", Compound({"MatOST", "MM"})},
            {"wri", FromHex("31BE000000AB")},
            {"xls", Compound({"Workbook", "\5SummaryInformation"})},
            {"xlsx", OpenXml("spreadsheetml.sheet")}};
        all.merge(Recordings());
        return all;
    }();
    return documents;
}

}  // namespace ostrevin::documents
