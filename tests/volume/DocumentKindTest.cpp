// Documents that may be handed to the desktop, and what only bears their names.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/volume/documents/DocumentKind.h"
#include "platform/volume/documents/Inflate.h"
#include "tests/support/DocumentFiles.h"

namespace ostrevin::documents {
namespace {

using namespace std::string_view_literals;

/// A file in memory that counts what is read of it.
class BytesFile final : public InputFile {
  public:
    explicit BytesFile(std::string bytes, std::uint64_t zeros = 0)
        : bytes_(std::move(bytes)), zeros_(zeros) {}
    [[nodiscard]] std::uint64_t Size() const override { return bytes_.size() + zeros_; }
    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        std::size_t done = 0;
        for (; done < buffer.size() && offset + done < Size(); ++done) {
            const std::uint64_t at = offset + done;
            buffer[done] = at < bytes_.size() ? static_cast<std::byte>(bytes_[at]) : std::byte{0};
        }
        read += done;
        return done;
    }
    std::size_t read = 0;

  private:
    std::string bytes_;
    std::uint64_t zeros_;  // that follow the bytes
};

Verdict JudgeBytes(std::string_view name, std::string bytes) {
    BytesFile file(std::move(bytes));
    return Judge(name, file);
}

TEST(DocumentKind, NamesAreThoseOfDocumentsPicturesSoundsAndFilms) {
    for (const char* name : {"a.txt", "Report.DOC", "photo.jpeg", "song.MP3", "film.avi", "a.b.pdf",
                             "sheet.xls", "/a/b.c/d.Txt"}) {
        EXPECT_TRUE(IsDocumentName(name)) << name;
    }
    for (const char* name :
         {"a.exe", "a.com",     "a.bat", "a.cmd", "a.scr",  "a.pif",      "a.lnk",  "a.url",
          "a.vbs", "a.js",      "a.hta", "a.msi", "a.reg",  "a.chm",      "a.htm",  "a.html",
          "a.svg", "a.desktop", "a.sh",  "a.py",  "a.jar",  "a.AppImage", "a.docm", "a.txt.exe",
          "a",     "a.",        "",      "txt",   "a.txt ", "a.zip",      "a.mht",  "a.eml",
          "a.scf", "a.xml",     "a.ps",  "a.hlp", "a.msg",  "a.class"}) {
        EXPECT_FALSE(IsDocumentName(name)) << name;
        EXPECT_EQ(JudgeBytes(name, "text"), Verdict::OtherName) << name;
    }
}

TEST(DocumentKind, EachKindIsOpenedUnderItsOwnName) {
    for (const auto& [ending, bytes] : Documents()) {
        EXPECT_EQ(JudgeBytes("a." + ending, bytes), Verdict::Document) << ending;
    }
}

/// Endings of files that may have the same bytes.
const std::vector<std::set<std::string>>& Families() {
    static const std::vector<std::set<std::string>> families = {
        {"aac", "mp2", "mp3"},
        {"aif", "aiff"},
        {"asf", "wma", "wmv"},
        {"au", "snd"},
        {"avi", "divx"},
        {"bmp", "dib"},
        {"doc", "rtf"},
        {"jfif", "jpe", "jpeg", "jpg"},
        {"m1v", "m2v", "mpe", "mpeg", "mpg", "vob"},
        {"m4a", "m4v", "mov", "mp4", "qt"},
        {"mid", "midi", "rmi"},
        {"oga", "ogg", "ogm", "ogv", "opus"},
        {"pbm", "pgm", "pnm", "ppm"},
        {"pps", "ppt"},
        {"ra", "rm"},
        {"tif", "tiff"},
        {"txt", "log", "csv"},
        {"txt", "log", "csv", "pgm", "ppm"},  // a picture in digits is a text, too
    };
    return families;
}

TEST(DocumentKind, NoKindIsOpenedUnderAnothersName) {
    for (const auto& [ending, start] : Documents()) {
        // What is here no more than a signature would do as a text.
        const std::string bytes = start.size() <= 16 ? start + '\0' : start;
        for (const auto& [other, otherBytes] : Documents()) {
            const bool related =
                ending == other ||
                std::any_of(Families().begin(), Families().end(),
                            [&ending = ending, &other = other](const std::set<std::string>& family) {
                                return family.contains(ending) && family.contains(other);
                            });
            EXPECT_TRUE(related || JudgeBytes("a." + other, bytes) != Verdict::Document)
                << ending << " under the name of " << other;
        }
    }
}

TEST(DocumentKind, WhatIsNoDocumentIsRefusedUnderEveryName) {
    const std::map<std::string, std::string> lures = {
        {"jar", Jar()},
        {"zip", Zip({{"a.txt", "text"}})},
        {"empty zip", Zip({})},
        {"jar with an office document's list", OpenXml("wordprocessingml.document", {kManifest, kClass})},
        {"jar with a sheet's list", OpenXml("spreadsheetml.sheet", {kClass})},
        {"jar with a slide's list", OpenXml("presentationml.presentation", {{"meta-inf/manifest.mf", "x"}})},
        {"jar with a text's type", OpenDocument("oasis.opendocument.text", {kManifest})},
        {"application of Android", OpenDocument("oasis.opendocument.text", {{"classes.dex", "dex"}})},
        {"document with macros",
         Zip({{"[Content_Types].xml",
               ContentTypes("openxmlformats-officedocument.wordprocessingml.document.main") +
                   ContentTypes("ms-word.document.macroEnabled.main")}})},
        {"rar", "Rar!\x1A\x07"},
        {"7z", FromHex("377ABCAF271C")},
        {"gzip", FromHex("1F8B0800")},
        {"bzip2", "BZh91AY&SY"},
        {"cabinet", std::string("MSCF\0\0\0\0"sv)},
        {"Debian package", "!<arch>\ndebian-binary"},
        {"tape archive", "a.txt" + std::string(252, '\0') + "ustar  "},
        {"disc", std::string(0x8001, '\0') + "CD001"},
        {"help file", "ITSF\3"},
        {"installer's package",
         Compound({"WordDocument", "Workbook", "PowerPoint Document", "MatOST", "EncryptedPackage"},
                  std::string_view(FromHex("84100C0000000000C000000000000046")))},
        {"message of mail", Compound({"__properties_version1.0", "__nameid_version1.0"})},
        {"page", "<html><body onload=x></html>"},
        {"page behind a text", "Hello\n\n<HTML>"},
        {"page in UTF-16", std::string("\xFF\xFE<\0h\0t\0m\0l\0"sv)},
        {"page behind a mark", "\xEF\xBB\xBF  <!DOCTYPE html>"},
        {"drawing", "<?xml version=\"1.0\"?><svg onload=\"x\"/>"},
        {"drawing without a head", "<svg xmlns=\"x\"/>"},
        {"script", "#!/bin/sh\nrm x\n"},
        {"batch file", "\r\n@echo off\r\nformat c:\r\n"},
        {"another batch file", "@rem x\r\nformat c:\r\n"},
        {"keys for the registry", "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Run]\r\n"},
        {"more keys", "Windows Registry Editor Version 5.00\r\n"},
        {"setup script", "[Version]\r\nSignature=\"$CHICAGO$\"\r\n"},
        {"starter of a disc", "[autorun]\r\nopen=x.exe\r\n"},
        {"command of the shell", "[Shell]\r\nCommand=2\r\n"},
        {"torrent", "d8:announce35:http://x"},
        {"page description", "%!PS-Adobe-3.0\n"},
        {"starter", "# x\n[Desktop Entry]\nType=Application\nExec=x\n"},
        {"starter in UTF-16", std::string("\xFE\xFF\0[\0D\0e\0s\0k\0t\0o\0p\0 \0E\0n\0t\0r\0y\0]"sv)},
        {"address file", "[InternetShortcut]\r\nURL=file:///c:/x.exe\r\n"},
        {"saved page", "From: <Saved by Windows Internet Explorer 7>\r\nMIME-Version: 1.0\r\n"},
        {"letter", "Return-Path: <a@example.com>\r\n\r\ntext"},
        {"shortcut", FromHex("4C0000000114020000000000C000000000000046")},
        {"nothing but zeros", std::string(1000, '\0')},
        {"terminal's text", "\x1B]0;title\x07"},
        {"class of Java", FromHex("CAFEBABE00000034")}};
    for (const auto& [what, bytes] : lures) {
        for (const auto& [ending, document] : Documents()) {
            EXPECT_NE(JudgeBytes("a." + ending, bytes), Verdict::Document) << what << " as " << ending;
        }
    }
    // A tape archive's mark says more than a text's words before it.
    EXPECT_EQ(JudgeBytes("a.txt", lures.at("jar")), Verdict::Archive);
    EXPECT_EQ(JudgeBytes("a.doc", lures.at("page")), Verdict::Markup);
    EXPECT_EQ(JudgeBytes("a.jpg", lures.at("script")), Verdict::Executes);
    EXPECT_EQ(JudgeBytes("a.pdf", lures.at("shortcut")), Verdict::OtherContent);
}

TEST(DocumentKind, AnArchiveAtTheEndOfADocumentIsFound) {
    for (const auto& [ending, bytes] : Documents()) {
        EXPECT_EQ(JudgeBytes("a." + ending, bytes + Jar()), Verdict::Archive) << ending;
        EXPECT_EQ(JudgeBytes("a." + ending, bytes + Zip({kManifest, kClass}, "comment")), Verdict::Archive)
            << ending;
        const bool compound = bytes.starts_with("\xD0\xCF");
        if (!compound) {
            EXPECT_EQ(JudgeBytes("a." + ending, bytes + Jar() + "\n%%EOF\n"), Verdict::Archive) << ending;
            EXPECT_EQ(JudgeBytes("a." + ending, bytes + Zip({kManifest}, {}, bytes.size())), Verdict::Archive)
                << ending;
        }
    }
    // A film's header in the header of an archive's first part.
    std::string film = Jar();
    film.replace(4, 4, "ftyp");
    EXPECT_EQ(JudgeBytes("a.mp4", film), Verdict::Archive);
    // A document that holds an office document of the newer kind.
    const std::string holder =
        Compound({"WordDocument", "Package"}) + OpenXml("spreadsheetml.sheet") + std::string(100, '\0');
    EXPECT_EQ(JudgeBytes("a.doc", holder), Verdict::Document);
}

TEST(DocumentKind, APackageIsOneArchiveFromEndToEnd) {
    const std::string types = ContentTypes("openxmlformats-officedocument.wordprocessingml.document.main");
    const Part list = {"[Content_Types].xml", types};
    EXPECT_EQ(JudgeBytes("a.docx", Zip({list})), Verdict::Document);
    EXPECT_NE(JudgeBytes("a.docx", Zip({list}, "comment")), Verdict::Document);
    EXPECT_NE(JudgeBytes("a.docx", "MZ" + Zip({list}, {}, 2)), Verdict::Document);
    EXPECT_NE(JudgeBytes("a.docx", Zip({list}) + "x"), Verdict::Document);
    EXPECT_NE(JudgeBytes("a.docx", Zip({{"a.xml", "", 0, {}, "META-INF/"}, list})), Verdict::Document)
        << "two names for one part";
    EXPECT_NE(JudgeBytes("a.docx", Zip({{"[Content_Types].xml", types, 0, FromHex("FECA0000")}})),
              Verdict::Document)
        << "the mark of Java";
    EXPECT_NE(JudgeBytes("a.docx", Zip({{"word/document.xml", "<w/>"}})), Verdict::Document) << "no list";
    EXPECT_NE(JudgeBytes("a.docx", Zip({{"[Content_Types].xml", types, 12}})), Verdict::Document) << "bzip2";
    EXPECT_NE(JudgeBytes("a.odt", Zip({{"content.xml", "x"},
                                       {"mimetype", "application/vnd.oasis.opendocument.text"}})),
              Verdict::Document);
    std::string cut = Zip({list});
    cut.erase(cut.size() - 30, 4);
    EXPECT_NE(JudgeBytes("a.docx", cut), Verdict::Document);
    EXPECT_EQ(JudgeBytes("a.docx", Compound({"EncryptionInfo", "EncryptedPackage"})), Verdict::Document)
        << "locked by a password";
}

// The list of a word processor's document, deflated by zlib with codes of its own and with the fixed ones.
const char kDeflatedTypes[] =
    "7d50c94ec33010fd156bae2871e080108ad303cb1138940f18d993c4aa3779dcd2fe3d4e5b7a4085e3cc5bf5fad5de3bb1a3"
    "cc360605b76d0782828ec68649c1e7fab57900c10583411703293810c36ae8d787442caa36b082b994f42825eb993c721b13"
    "858a8c317b2cf5cc934ca8373891bcebba7ba96328144a53160f18fa671a71eb8a78d9d7f7a94726c7209e4ec4254b01a6e4"
    "acc65271b90be6574a734e68abf2c8e1d926bea90490571316e4ef80b3eebd0e93ad21f181b9bca1af2cf915b39126eaadaf"
    "caf67f9b2b3de3385a4d17fde29672d4c45c17f7aebd201e6df8e92f8f730fdf";
const char kFixedTypes[] =
    "b3b1afc8cd51284b2d2acecccfb35532d433505248cd4bce4fc9cc4bb7550a0d71d3b55052282e49cc4b49ccc9cf4bb555aa"
    "4c2d56b2b7b309a92c482d5600eacd2bb655ca282929b0d2d72f4ece48cd4d2cd6cb2f48cd03caa4e517e5269600b945e9fa"
    "0589c9d989e9a9fa46060666fac9f97925a97925ba25203394ec6c5c52d3124b734a145c2b80c2107714a5e6142b29384314"
    "82ecb2554a2c28c8c94c4e2c01caeb97e5a5a0d9a20bb5410fa813aca63823b3a0581ba840491fab0d2019dc1640f5f90303"
    "a6283325552120b1a8c42f3117a84abf3cbf28453f253fb93417a8530fbf3158dc999f9696999c0ad70f32ada0283f39b5b8"
    "1818e2b9397a7099dcc4cc3c98fbf5c1c16d0700";
constexpr std::size_t kTypesSize = 429;

TEST(DocumentKind, DeflatedListsAreRead) {
    for (const char* deflated : {kDeflatedTypes, kFixedTypes}) {
        const std::string bytes = FromHex(deflated);
        const std::optional<std::string> text = Inflate(bytes, kTypesSize);
        ASSERT_TRUE(text);
        EXPECT_EQ(text->size(), kTypesSize);
        EXPECT_TRUE(text->starts_with("<?xml version=\"1.0\"")) << *text;
        EXPECT_TRUE(text->ends_with("document.main+xml\"/></Types>")) << *text;
        EXPECT_EQ(Inflate(bytes, kTypesSize - 1), std::nullopt) << "more than the most";
        EXPECT_EQ(JudgeBytes("a.docx", Zip({{"[Content_Types].xml", bytes, 8}})), Verdict::Document);
        EXPECT_NE(JudgeBytes("a.xlsx", Zip({{"[Content_Types].xml", bytes, 8}})), Verdict::Document);
        for (std::size_t size = 0; size < bytes.size(); ++size) {
            EXPECT_EQ(Inflate(bytes.substr(0, size), 1000), std::nullopt) << size;
        }
    }
    EXPECT_EQ(Inflate(std::string("\1\3\0\xFC\xFF"
                                  "abc"sv),
                      3),
              "abc")
        << "a stored block";
    EXPECT_EQ(Inflate(std::string("\1\3\0\xFC\xFE"
                                  "abc"sv),
                      3),
              std::nullopt);
    EXPECT_EQ(Inflate("\x07", 3), std::nullopt) << "a block of no kind";
    EXPECT_EQ(Inflate(std::string("\x03\x02\0"sv), 1000), std::nullopt) << "a distance before the beginning";
}

TEST(DocumentKind, TextMayBeEmptyAndInAnyEncoding) {
    EXPECT_EQ(JudgeBytes("a.txt", ""), Verdict::Document);
    EXPECT_EQ(JudgeBytes("a.txt", std::string("\xFF\xFEH\0i\0\x16\x04"sv)), Verdict::Document);
    EXPECT_EQ(JudgeBytes("a.txt", std::string("\xFE\xFF\0H\0i"sv)), Verdict::Document);
    EXPECT_EQ(JudgeBytes("a.txt", "\xEF\xBB\xBFHi \xD0\x96"), Verdict::Document);
    EXPECT_EQ(JudgeBytes("a.log", "<2009-08-04 15:22:18> 1 < 2, <> [Desktop]\n"), Verdict::Document);
    EXPECT_EQ(JudgeBytes("a.txt", "From Paris with love"), Verdict::Document);
    EXPECT_NE(JudgeBytes("a.txt", std::string("\xFF\xFE\0\0H\0\0\0"sv)), Verdict::Document);
    EXPECT_NE(JudgeBytes("a.txt", std::string("Hi\0there"sv)), Verdict::Document);
    for (const char* ending : {"doc", "docx", "odt", "pdf", "rtf", "jpg", "mp3", "avi"}) {
        EXPECT_NE(JudgeBytes(std::string("a.") + ending, ""), Verdict::Document) << ending;
    }
}

TEST(DocumentKind, OfAHugeFileLittleIsRead) {
    constexpr std::uint64_t kHuge = std::uint64_t{1} << 40U;
    for (const auto& [ending, bytes] : Documents()) {
        BytesFile file(bytes, kHuge);
        const bool whole = bytes.starts_with("PK") || ending == "txt" || ending == "log" || ending == "csv";
        EXPECT_EQ(Judge("a." + ending, file) == Verdict::Document, !whole) << ending;
        EXPECT_LT(file.read, 400'000U) << ending;
    }
    // A directory whose chain of sectors goes round, and whose table is far away.
    std::string round = Compound({"a"});
    round.replace(512 + 4, 4, Little(1, 4));
    BytesFile file(round, kHuge);
    EXPECT_NE(Judge("a.doc", file), Verdict::Document);
    EXPECT_LT(file.read, 2'000'000U);
    std::string far = Compound({"a"});
    far.replace(48, 4, Little(0x00FFFFFF, 4));
    far.replace(68, 4, Little(0, 4));
    BytesFile farFile(far, kHuge);
    EXPECT_NE(Judge("a.doc", farFile), Verdict::Document);
    EXPECT_LT(farFile.read, 2'000'000U);
}

}  // namespace
}  // namespace ostrevin::documents
