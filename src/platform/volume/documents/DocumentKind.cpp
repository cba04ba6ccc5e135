#include "platform/volume/documents/DocumentKind.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
#include <string>

#include "platform/Text.h"
#include "platform/volume/documents/CompoundFile.h"
#include "platform/volume/documents/FileBytes.h"
#include "platform/volume/documents/OfficePackage.h"
#include "platform/volume/documents/PlainText.h"
#include "platform/volume/documents/ZipDirectory.h"

namespace ostrevin::documents {
namespace {

using namespace std::string_view_literals;

/// A file, and as much of its beginning as programs look at to tell what it is.
struct Content {
    InputFile& file;
    std::string_view beginning;

    [[nodiscard]] bool Starts(std::initializer_list<std::string_view> signatures) const {
        return std::any_of(signatures.begin(), signatures.end(),
                           [&](std::string_view each) { return beginning.starts_with(each); });
    }
    [[nodiscard]] bool Has(std::size_t at, std::initializer_list<std::string_view> signatures) const {
        return at <= beginning.size() &&
               std::any_of(signatures.begin(), signatures.end(),
                           [&](std::string_view each) { return beginning.substr(at).starts_with(each); });
    }
    [[nodiscard]] unsigned Byte(std::size_t at) const {
        return at < beginning.size() ? static_cast<unsigned char>(beginning[at]) : 0U;
    }
};

bool IsAmong(unsigned number, std::initializer_list<unsigned> numbers) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

bool IsText(const Content& content) {
    return TextKindOf(content.beginning) == TextKind::Plain;
}

/// Whether a compound file has a stream by which one of its applications knows its documents. An installer's
/// package is a compound file as well, known by the class of its root.
bool HasStream(const Content& content, std::initializer_list<std::string_view> names) {
    constexpr std::string_view kInstallers = "\0\0\0\0\xC0\0\0\0\0\0\0\x46"sv;  // after the first number
    const std::optional<CompoundDirectory> directory = ReadCompoundDirectory(content.file);
    if (!directory) {
        return false;
    }
    const std::string& rootClass = directory->rootClass;
    const bool installer = (Number32(rootClass, 0) & 0xFFFFFFF0U) == 0x000C1080U;
    if (installer && rootClass.ends_with(kInstallers)) {
        return false;
    }
    return std::any_of(directory->streams.begin(), directory->streams.end(), [&](const std::string& stream) {
        return std::find(names.begin(), names.end(), stream) != names.end();
    });
}

bool IsWord(const Content& content) {
    return content.Starts({"{\\rtf"sv}) || HasStream(content, {"WordDocument"sv});
}
bool IsExcel(const Content& content) {
    return HasStream(content, {"Workbook"sv, "Book"sv});
}
bool IsPowerPoint(const Content& content) {
    return HasStream(content, {"PowerPoint Document"sv});
}
bool IsWorks(const Content& content) {
    return HasStream(content, {"MatOST"sv, "CONTENTS"sv});
}
bool IsWrite(const Content& content) {
    return content.Starts({"\x31\xBE\0\0\0\xAB"sv, "\x32\xBE\0\0\0\xAB"sv});
}
bool IsRtf(const Content& content) {
    return content.Starts({"{\\rtf"sv});
}
bool IsPdf(const Content& content) {
    return content.Starts({"%PDF-"sv});
}

/// A document of Office Open XML, or one that a password locks, which is a compound file.
bool IsOpenXml(const Content& content, std::string_view mainType) {
    return IsOfficeOpenXml(content.file, "application/vnd.openxmlformats-officedocument." +
                                             std::string(mainType) + ".main+xml") ||
           HasStream(content, {"EncryptedPackage"sv});
}
bool IsDocx(const Content& content) {
    return IsOpenXml(content, "wordprocessingml.document");
}
bool IsXlsx(const Content& content) {
    return IsOpenXml(content, "spreadsheetml.sheet");
}
bool IsPptx(const Content& content) {
    return IsOpenXml(content, "presentationml.presentation");
}
bool IsOdt(const Content& content) {
    return IsOpenDocument(content.file, {"application/vnd.oasis.opendocument.text"sv});
}
bool IsOds(const Content& content) {
    return IsOpenDocument(content.file, {"application/vnd.oasis.opendocument.spreadsheet"sv});
}
bool IsOdp(const Content& content) {
    return IsOpenDocument(content.file, {"application/vnd.oasis.opendocument.presentation"sv});
}
bool IsOdg(const Content& content) {
    return IsOpenDocument(content.file, {"application/vnd.oasis.opendocument.graphics"sv});
}
bool IsSxw(const Content& content) {
    return IsOpenDocument(content.file, {"application/vnd.sun.xml.writer"sv});
}
bool IsSxc(const Content& content) {
    return IsOpenDocument(content.file, {"application/vnd.sun.xml.calc"sv});
}
bool IsSxi(const Content& content) {
    return IsOpenDocument(content.file, {"application/vnd.sun.xml.impress"sv});
}

// Pictures.

bool IsJpeg(const Content& content) {
    return content.Starts({"\xFF\xD8\xFF"sv});
}
bool IsPng(const Content& content) {
    return content.Starts({"\x89PNG\r\n\x1A\n"sv});
}
bool IsGif(const Content& content) {
    return content.Starts({"GIF87a"sv, "GIF89a"sv});
}
/// The size of the header is one that a version of the format has.
bool IsBitmapHeader(unsigned size) {
    return IsAmong(size, {12, 40, 52, 56, 64, 108, 124});
}
bool IsBmp(const Content& content) {
    return content.Starts({"BM"sv}) && IsBitmapHeader(Number32(content.beginning, 14));
}
bool IsDib(const Content& content) {
    return IsBmp(content) || (content.Starts({"\x28\0\0\0"sv}) && Number16(content.beginning, 12) == 1);
}
bool IsIcon(const Content& content) {
    return content.Starts({"\0\0\1\0"sv}) && Number16(content.beginning, 4) != 0;
}
bool IsTiff(const Content& content) {
    return content.Starts({"II*\0"sv, "MM\0*"sv});
}
bool IsWebp(const Content& content) {
    return content.Starts({"RIFF"sv}) && content.Has(8, {"WEBP"sv});
}
bool IsPhotoshop(const Content& content) {
    return content.Starts({"8BPS\0\1"sv});
}
bool IsPaintbrush(const Content& content) {
    return content.Byte(0) == 0x0A && IsAmong(content.Byte(1), {0, 2, 3, 4, 5}) && content.Byte(2) == 1 &&
           IsAmong(content.Byte(3), {1, 2, 4, 8});
}
bool IsEnhancedMetafile(const Content& content) {
    return content.Starts({"\1\0\0\0"sv}) && content.Has(40, {" EMF"sv});
}
bool IsMetafile(const Content& content) {
    return content.Starts({"\xD7\xCD\xC6\x9A\0\0"sv, "\1\0\x09\0\0\3"sv, "\2\0\x09\0\0\3"sv});
}
/// Text may follow: it must not read as something else.
bool IsAnymap(const Content& content) {
    const TextKind kind = TextKindOf(content.beginning);
    return content.Byte(0) == 'P' && content.Byte(1) >= '1' && content.Byte(1) <= '6' &&
           IsAmong(content.Byte(2), {' ', '\t', '\r', '\n'}) &&
           (kind == TextKind::Plain || kind == TextKind::Binary);
}

// Sounds and films.

bool IsRiff(const Content& content, std::string_view form) {
    return content.Starts({"RIFF"sv}) && content.Has(8, {form});
}
bool IsWave(const Content& content) {
    return IsRiff(content, "WAVE");
}
bool IsAvi(const Content& content) {
    return IsRiff(content, "AVI ");
}
bool IsMidi(const Content& content) {
    return content.Starts({"MThd"sv}) || IsRiff(content, "RMID");
}
bool IsAiff(const Content& content) {
    return content.Starts({"FORM"sv}) && content.Has(8, {"AIFF"sv, "AIFC"sv});
}
bool IsSunAudio(const Content& content) {
    return content.Starts({".snd"sv});
}
bool IsFlac(const Content& content) {
    return content.Starts({"fLaC"sv});
}
bool IsMonkey(const Content& content) {
    return content.Starts({"MAC "sv});
}
/// A frame of MPEG audio, or a tag before the first one.
bool IsMpegAudio(const Content& content) {
    const bool frame = content.Byte(0) == 0xFF && (content.Byte(1) & 0xE0U) == 0xE0 &&
                       (content.Byte(1) & 0x06U) != 0 && (content.Byte(2) & 0xF0U) != 0xF0 &&
                       (content.Byte(2) & 0x0CU) != 0x0C;
    return frame || content.Starts({"ID3\2"sv, "ID3\3"sv, "ID3\4"sv});
}
bool IsAac(const Content& content) {
    return content.Starts({"ADIF"sv, "ID3\3"sv, "ID3\4"sv}) ||
           (content.Byte(0) == 0xFF && (content.Byte(1) & 0xF6U) == 0xF0);
}
bool IsAc3(const Content& content) {
    return content.Starts({"\x0B\x77"sv});
}
bool IsOgg(const Content& content) {
    return content.Starts({"OggS"sv});
}
bool IsMatroska(const Content& content) {
    return content.Starts({"\x1A\x45\xDF\xA3"sv});
}
bool IsFlash(const Content& content) {
    return content.Starts({"FLV\1"sv});
}
bool IsMpegVideo(const Content& content) {
    return content.Starts({"\0\0\1\xBA"sv, "\0\0\1\xB3"sv});
}
bool IsQuickTime(const Content& content) {
    return content.Has(4, {"ftyp"sv, "moov"sv, "mdat"sv, "wide"sv, "free"sv, "skip"sv, "pnot"sv});
}
bool IsReal(const Content& content) {
    return content.Starts({".RMF"sv, ".ra\xFD"sv});
}
bool IsWindowsMedia(const Content& content) {
    return content.Starts({"\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv});
}

using Test = bool (*)(const Content&);

struct Kind {
    std::string_view ending;  ///< in upper case
    Test matches;
    bool isPackage = false;  ///< may be an archive, which the test looks into
};

// Left out on purpose: pages and drawings that carry scripts (HTM, MHT, SVG, XML), page descriptions, which
// are programs (PS), documents with macros in their name (DOCM, XLSM), help files, messages, archives, and
// pictures that no signature tells (TGA).
constexpr std::array kKinds = {
    Kind{"AAC", IsAac},          Kind{"AC3", IsAc3},          Kind{"AIF", IsAiff},
    Kind{"AIFF", IsAiff},        Kind{"APE", IsMonkey},       Kind{"ASF", IsWindowsMedia},
    Kind{"AU", IsSunAudio},      Kind{"AVI", IsAvi},          Kind{"BMP", IsBmp},
    Kind{"CSV", IsText},         Kind{"DIB", IsDib},          Kind{"DIVX", IsAvi},
    Kind{"DOC", IsWord},         Kind{"DOCX", IsDocx, true},  Kind{"EMF", IsEnhancedMetafile},
    Kind{"FLAC", IsFlac},        Kind{"FLV", IsFlash},        Kind{"GIF", IsGif},
    Kind{"ICO", IsIcon},         Kind{"JFIF", IsJpeg},        Kind{"JPE", IsJpeg},
    Kind{"JPEG", IsJpeg},        Kind{"JPG", IsJpeg},         Kind{"LOG", IsText},
    Kind{"M1V", IsMpegVideo},    Kind{"M2V", IsMpegVideo},    Kind{"M4A", IsQuickTime},
    Kind{"M4V", IsQuickTime},    Kind{"MID", IsMidi},         Kind{"MIDI", IsMidi},
    Kind{"MKV", IsMatroska},     Kind{"MOV", IsQuickTime},    Kind{"MP2", IsMpegAudio},
    Kind{"MP3", IsMpegAudio},    Kind{"MP4", IsQuickTime},    Kind{"MPE", IsMpegVideo},
    Kind{"MPEG", IsMpegVideo},   Kind{"MPG", IsMpegVideo},    Kind{"ODG", IsOdg, true},
    Kind{"ODP", IsOdp, true},    Kind{"ODS", IsOds, true},    Kind{"ODT", IsOdt, true},
    Kind{"OGA", IsOgg},          Kind{"OGG", IsOgg},          Kind{"OGM", IsOgg},
    Kind{"OGV", IsOgg},          Kind{"OPUS", IsOgg},         Kind{"PBM", IsAnymap},
    Kind{"PCX", IsPaintbrush},   Kind{"PDF", IsPdf},          Kind{"PGM", IsAnymap},
    Kind{"PNG", IsPng},          Kind{"PNM", IsAnymap},       Kind{"PPM", IsAnymap},
    Kind{"PPS", IsPowerPoint},   Kind{"PPT", IsPowerPoint},   Kind{"PPTX", IsPptx, true},
    Kind{"PSD", IsPhotoshop},    Kind{"QT", IsQuickTime},     Kind{"RA", IsReal},
    Kind{"RM", IsReal},          Kind{"RMI", IsMidi},         Kind{"RTF", IsRtf},
    Kind{"SND", IsSunAudio},     Kind{"SXC", IsSxc, true},    Kind{"SXI", IsSxi, true},
    Kind{"SXW", IsSxw, true},    Kind{"TIF", IsTiff},         Kind{"TIFF", IsTiff},
    Kind{"TXT", IsText},         Kind{"VOB", IsMpegVideo},    Kind{"WAV", IsWave},
    Kind{"WEBP", IsWebp},        Kind{"WMA", IsWindowsMedia}, Kind{"WMF", IsMetafile},
    Kind{"WMV", IsWindowsMedia}, Kind{"WPS", IsWorks},        Kind{"WRI", IsWrite},
    Kind{"XLS", IsExcel},        Kind{"XLSX", IsXlsx, true},
};

const Kind* KindNamed(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos) {
        return nullptr;
    }
    const std::string ending = UpperCase(name.substr(dot + 1));
    const auto* kind =
        std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& each) { return each.ending == ending; });
    return kind == kKinds.end() ? nullptr : kind;
}

/// Whether a document has an archive in it that some reader would take it for.
bool HidesArchive(const Content& content) {
    constexpr std::size_t kTapeMark = 257;
    if (content.Has(kTapeMark, {"ustar"sv}) || content.Has(0x8001, {"CD001"sv}) ||
        content.Has(0x8801, {"CD001"sv}) || content.Has(0x9001, {"CD001"sv})) {
        return true;
    }
    // Office documents hold others, the newer of which are archives: only one at the very end counts.
    const bool compound = content.Starts({"\xD0\xCF\x11\xE0"sv});
    return compound ? EndsAsZip(content.file) : HoldsZipNearEnd(content.file);
}

bool IsArchive(const Content& content) {
    return content.Starts({"PK\3\4"sv, "PK\5\6"sv, "Rar!"sv, "7z\xBC\xAF"sv, "\x1F\x8B"sv, "BZh"sv, "MSCF"sv,
                           "ITSF"sv,
                           "\xFD"
                           "7zXZ"sv,
                           "!<arch>"sv}) ||
           HidesArchive(content);
}

/// What a file is that is not what its name says.
Verdict OtherThanNamed(const Content& content) {
    if (IsArchive(content)) {
        return Verdict::Archive;
    }
    switch (TextKindOf(content.beginning)) {
        case TextKind::Executes:
            return Verdict::Executes;
        case TextKind::Markup:
            return Verdict::Markup;
        default:
            return Verdict::OtherContent;
    }
}

}  // namespace

bool IsDocumentName(std::string_view name) {
    return KindNamed(name) != nullptr;
}

Verdict Judge(std::string_view name, InputFile& file) {
    constexpr std::size_t kBeginning = std::size_t{64} * 1024;
    const Kind* kind = KindNamed(name);
    if (kind == nullptr) {
        return Verdict::OtherName;
    }
    const std::string beginning = BytesAt(file, 0, kBeginning);
    const Content content{file, beginning};
    if (!kind->matches(content)) {
        return OtherThanNamed(content);
    }
    const bool package = kind->isPackage && content.Starts({"PK\3\4"sv});
    return !package && HidesArchive(content) ? Verdict::Archive : Verdict::Document;
}

}  // namespace ostrevin::documents
