#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sources/FileTimeToLocalDate.h"
#include "sources/IEHistoryList.h"
#include "tests/support/Lists.h"
#include "tests/support/MemoryPlatform.h"
#include "tests/support/PlainIndexScan.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/IndexWriter.h"
#include "tools/writers/Times.h"

namespace ostrevin {
namespace {

using Bytes = std::vector<std::byte>;
using Urls = std::vector<std::string>;

constexpr char kIndex[] = "C:\\Documents and Settings\\anna\\Local Settings\\History\\History.IE5\\index.dat";
constexpr std::size_t kBlock = 128;
constexpr std::uint32_t kHeader = 36;
/// The reader's window.
constexpr std::size_t kWindow = 256 * std::size_t{1024};

/// The beginning of an index whose scan starts at an offset.
void PutHeader(samples::ByteBuffer& file, std::uint32_t scanStart) {
    file.TextZ("Client UrlCache MMF Ver 5.2");
    file.U32(0);
    file.U32(scanStart);
}

/// A record as read, without the rest of its block.
void PutRecord(samples::ByteBuffer& file, std::string_view address, std::uint64_t accessed = 0,
               std::string_view signature = "URL ") {
    const std::size_t start = file.Size();
    file.Text(signature);
    file.U32(1);
    file.U64(samples::FileTimeOf({1999, 12, 31}));
    file.U64(accessed);
    file.PadTo(start + samples::kAddressOffset, 0xEE);
    file.TextZ(address);
}

/// An index whose records stand one behind the other, each at the start of a block.
Bytes IndexOf(const Urls& addresses) {
    samples::ByteBuffer file;
    PutHeader(file, kBlock);
    for (const std::string& address : addresses) {
        file.Align(kBlock);
        PutRecord(file, address);
    }
    file.Align(kBlock);
    return file.Take();
}

Urls UrlsOf(const IEHistoryList& list) {
    return All(list, &IEHistoryList::URL);
}

/// What is read from an index file, in its order.
Urls Read(std::span<const std::byte> bytes) {
    MemoryPlatform platform;
    platform.AddFile(kIndex, bytes);
    IEHistoryList list(platform, "");
    EXPECT_TRUE(list.LoadIEHistory("anna"));
    return UrlsOf(list);
}

Urls PlainUrls(std::span<const std::byte> bytes) {
    Urls urls;
    for (const PlainIndexRecord& record : PlainIndexScan(bytes).Records()) {
        urls.push_back(record.address);
    }
    return urls;
}

void ExpectAsPlain(std::span<const std::byte> bytes) {
    ASSERT_EQ(Read(bytes), PlainUrls(bytes)) << bytes.size() << " bytes";
}

// --- The choice of the file.

class IndexChoice : public testing::Test {
  protected:
    IndexChoice() { platform.specialFolders[34] = "C:\\Profiles\\boss\\History"; }
    void AddIndex(const std::string& path, const std::string& address) {
        platform.AddFile(path, IndexOf({address}));
    }
    Urls Load(const std::string& account = "anna", const std::string& loggedOn = "boss") {
        platform.filesOpened.clear();
        IEHistoryList list(platform, loggedOn);
        loaded = list.LoadIEHistory(account);
        return UrlsOf(list);
    }

    MemoryPlatform platform;
    bool loaded = false;
};

TEST_F(IndexChoice, AFileIsThereWhateverItsAttributesAre) {
    const std::string content =
        "C:\\Documents and Settings\\anna\\Local Settings\\Temporary Internet Files\\Content.IE5\\index.dat";
    AddIndex(content, "content");
    for (const std::uint32_t attributes :
         {0U + kAttributeHidden, 0U + kAttributeSystem, 0U + kAttributeReadOnly, 7U, 0x20U}) {
        platform.AddFile(kIndex, IndexOf({"history"}), attributes);
        EXPECT_EQ(Load(), Urls{"history"}) << attributes;
    }
    platform.AddFile(kIndex, {}, kAttributeDirectory | kAttributeHidden);
    EXPECT_EQ(Load(), Urls{"content"}) << "a folder is no file";
}

TEST_F(IndexChoice, TakesTheFirstOfFourAndNoOther) {
    const std::string profile = "C:\\Documents and Settings\\anna\\";
    EXPECT_EQ(Load(), Urls{});
    EXPECT_FALSE(loaded);
    EXPECT_TRUE(platform.filesOpened.empty());
    AddIndex(profile + "Cookies\\index.dat", "cookies");
    EXPECT_EQ(Load(), Urls{"cookies"});
    AddIndex(profile + "Local Settings\\Temporary Internet Files\\Content.IE5\\index.dat", "content");
    EXPECT_EQ(Load(), Urls{"content"});
    AddIndex(kIndex, "history");
    EXPECT_EQ(Load(), Urls{"history"});
    AddIndex("C:\\Profiles\\anna\\History\\index.dat", "folder");
    EXPECT_EQ(Load(), Urls{"folder"});
    EXPECT_TRUE(loaded);
    EXPECT_EQ(platform.filesOpened.size(), 1U);
}

TEST_F(IndexChoice, StaysWithAnEmptyFile) {
    platform.AddFile(kIndex);
    AddIndex("C:\\Documents and Settings\\anna\\Cookies\\index.dat", "cookies");
    EXPECT_EQ(Load(), Urls{});
}

TEST_F(IndexChoice, StaysWithAFileThatCannotBeOpened) {
    platform.AddFile(kIndex, IndexOf({"a"})).readable = false;
    AddIndex("C:\\Documents and Settings\\anna\\Cookies\\index.dat", "cookies");
    EXPECT_EQ(Load(), Urls{});
    EXPECT_FALSE(loaded);
}

TEST_F(IndexChoice, AFolderOfThatNameIsNoFile) {
    platform.AddFolder(kIndex);
    AddIndex("C:\\Documents and Settings\\anna\\Cookies\\index.dat", "cookies");
    EXPECT_EQ(Load(), Urls{"cookies"});
}

TEST_F(IndexChoice, ReplacesEveryOccurrenceOfTheNameWithRegardToCase) {
    platform.specialFolders[34] = "C:\\boss\\Boss\\boss.pc\\History";
    AddIndex("C:\\anna\\Boss\\anna.pc\\History\\index.dat", "found");
    EXPECT_EQ(Load(), Urls{"found"});
}

TEST_F(IndexChoice, ReplacesTheNameInTheFileNameToo) {
    AddIndex("C:\\Profiles\\boss\\History\\anna.dat", "odd");
    EXPECT_EQ(Load("anna", "index"), Urls{"odd"});
}

TEST_F(IndexChoice, AnEmptyNameReplacesNothing) {
    AddIndex("C:\\Profiles\\boss\\History\\index.dat", "of the logged-on user");
    EXPECT_EQ(Load("anna", ""), Urls{"of the logged-on user"});
}

TEST_F(IndexChoice, LooksOnTheSystemDrive) {
    platform.windowsDirectory = "D:\\WINNT";
    AddIndex(kIndex, "wrong drive");
    AddIndex("D:\\Documents and Settings\\anna\\Cookies\\index.dat", "right drive");
    EXPECT_EQ(Load(), Urls{"right drive"});
}

// --- Records.

TEST(IEHistoryList, ReadsWhatTheCacheWrites) {
    samples::IndexRecord first;
    first.address = "Visited: anna@http://example.org/";
    first.modified = samples::FileTimeOf({2001, 1, 1});
    first.accessed = samples::FileTimeOf({2009, 8, 4, 15, 22, 18});
    samples::IndexRecord redirect;
    redirect.kind = samples::IndexRecord::Kind::Redirect;
    redirect.address = "http://redirect.example/";
    samples::IndexRecord leak;
    leak.kind = samples::IndexRecord::Kind::Leak;
    leak.address = "Visited: anna@file:///C:/a.txt";
    leak.headers = std::string(300, 'h');
    samples::IndexRecord last;
    last.address = "http://example.org/" + std::string(500, 'x');
    last.fileName = "index[1].htm";

    MemoryPlatform platform;
    platform.biasMinutes = -120;
    platform.AddFile(kIndex, samples::WriteIndex({first, redirect, leak, last}, {}));
    IEHistoryList list(platform, "");
    EXPECT_TRUE(list.LoadIEHistory("anna"));
    EXPECT_EQ(UrlsOf(list), (Urls{"http://example.org/", "file:///C:/a.txt", last.address}));
    EXPECT_EQ(platform.DateToText(list.DateAccessed(0), DateForm::General), "8/4/2009 5:22:18 PM");
    EXPECT_EQ(list.DateAccessed(1), kDateOfNoTime);
}

TEST(IEHistoryList, KeepsWhatFollowsTheFirstAt) {
    EXPECT_EQ(Read(IndexOf({"Visited: anna@http://a@b/", "http://plain/", "@", "x@", "@@y", ""})),
              (Urls{"http://a@b/", "http://plain/", "", "", "@y", ""}));
}

TEST(IEHistoryList, ListsRepeatedAddressesEachTime) {
    EXPECT_EQ(Read(IndexOf({"a", "b", "a", "a"})), (Urls{"a", "b", "a", "a"}));
}

TEST(IEHistoryList, DecodesAddressesWithTheCodePage) {
    EXPECT_EQ(Read(IndexOf({"caf\xE9 \x80"})), Urls{"caf\u00E9 \u20AC"});
}

TEST(IEHistoryList, TakesTheAddressAtItsFixedPlace) {
    samples::IndexRecord record;
    record.address = "http://example.org/";
    record.addressPointer = 120;
    EXPECT_EQ(Read(samples::WriteIndex({record}, {})), Urls{record.address});
}

TEST(IEHistoryList, OtherSignaturesArePassedOver) {
    for (const std::string_view signature : {"REDR", "HASH", "url ", "URL\0", "LEAk", " URL"}) {
        samples::ByteBuffer file;
        PutHeader(file, kBlock);
        file.Align(kBlock);
        PutRecord(file, "passed", 0, signature);
        file.Align(kBlock);
        PutRecord(file, "leaked", 0, "LEAK");
        EXPECT_EQ(Read(file.Take()), Urls{"leaked"}) << signature;
    }
}

TEST(IEHistoryList, FindsASignatureInsideOfOtherDataEveryFourBytes) {
    for (const std::size_t shift : {0U, 1U, 2U, 3U, 4U, 8U, 100U}) {
        samples::ByteBuffer file;
        PutHeader(file, kBlock);
        file.Align(kBlock);
        file.Text("HASH");
        file.PadTo(file.Size() + 36 + shift, 'x');
        PutRecord(file, "inside");
        file.PadTo(4 * kBlock);
        const Urls expected = shift % 4 == 0 ? Urls{"inside"} : Urls{};
        EXPECT_EQ(Read(file.Take()), expected) << shift;
    }
}

TEST(IEHistoryList, TheStepsStartAtTheScansOffset) {
    for (const std::uint32_t start : {kHeader, kHeader + 1, kHeader + 3, kHeader + 4}) {
        samples::ByteBuffer file;
        PutHeader(file, start);
        file.PadTo(kHeader + 41);
        PutRecord(file, "odd");
        const Urls expected = start % 4 == 1 ? Urls{"odd"} : Urls{};
        EXPECT_EQ(Read(file.Take()), expected) << start;
    }
}

TEST(IEHistoryList, AnyTextMayStandInFront) {
    for (const std::string_view signature : {"", "x", "Client UrlCache MMF Ver 4.7", "a much longer one"}) {
        samples::ByteBuffer file;
        file.TextZ(signature);
        file.U32(0xFFFFFFFF);
        file.U32(256);
        file.PadTo(256);
        PutRecord(file, "found");
        EXPECT_EQ(Read(file.Take()), Urls{"found"}) << signature;
    }
}

TEST(IEHistoryList, TheScanMayStartAnywhere) {
    samples::ByteBuffer file;
    PutHeader(file, 0);
    file.Align(kBlock);
    PutRecord(file, "record");
    file.Align(kBlock);
    const Bytes sound = file.Take();
    for (const std::uint32_t start : {0U, 1U, 31U, 124U, 128U, 129U, 252U, 253U, 255U, 256U, 257U, 1000U,
                                      0x7FFFFFFFU, 0x80000000U, 0xFFFFFF80U, 0xFFFFFFFFU}) {
        samples::ByteBuffer moved;
        moved.Bytes(sound);
        moved.PutU32(32, start);
        const Bytes bytes = moved.Take();
        const bool finds = start <= 128 && start % 4 == 0;
        EXPECT_EQ(Read(bytes), finds ? Urls{"record"} : Urls{}) << start;
        ExpectAsPlain(bytes);
    }
}

TEST(IEHistoryList, AnAddressLongerThanAnyIsCutAndTheScanGoesOnBehindIt) {
    constexpr std::size_t kLongest = IEHistoryList::kLongestAddress;
    const std::string longest(kLongest, 'x');
    MemoryPlatform platform;
    platform.AddFile(kIndex, IndexOf({"Visited: anna@" + longest, std::string(3'000'000, 'y'), "last"}));
    IEHistoryList list(platform, "");
    EXPECT_TRUE(list.LoadIEHistory("anna"));
    EXPECT_TRUE(UrlsOf(list) == (Urls{longest, std::string(kLongest, 'y'), "last"}));
    EXPECT_EQ(list.Loss(), "Texts of more than 1048576 characters are cut.");
    platform.AddFile(kIndex, IndexOf({longest}));
    IEHistoryList whole(platform, "");
    EXPECT_TRUE(whole.LoadIEHistory("anna"));
    EXPECT_TRUE(UrlsOf(whole) == Urls{longest});
    EXPECT_EQ(whole.Loss(), "");
}

// --- Going on behind a record.

TEST(IEHistoryList, GoesOnAtTheNextBlockOrSkipsOne) {
    // Every place in its block that the first byte behind an address can have. Each block after the one in
    // which the address ends holds a record of its own; the first of them that is listed tells where the
    // scan went on.
    for (std::size_t place = 0; place < kBlock; ++place) {
        samples::ByteBuffer file;
        PutHeader(file, kBlock);
        file.Align(kBlock);
        PutRecord(file, std::string(kBlock + place - 1 - samples::kAddressOffset + kBlock, 'a'));
        const std::size_t next = file.Size();
        ASSERT_EQ(next % kBlock, place);
        for (std::size_t block = (next + kBlock - 1) / kBlock; block < 8; ++block) {
            file.PadTo(block * kBlock);
            PutRecord(file, std::to_string(block));
        }
        file.Align(kBlock);
        const Bytes bytes = file.Take();
        const std::size_t normal = next / kBlock + 1;
        const Urls urls = Read(bytes);
        ASSERT_GE(urls.size(), 2U);
        EXPECT_EQ(urls[1], std::to_string(place == kBlock - 1 ? normal + 1 : normal)) << place;
        ExpectAsPlain(bytes);
    }
}

TEST(IEHistoryList, ARecordRightBehindAnAddressThatFillsItsBlockIsSkipped) {
    const std::string filling(kBlock - samples::kAddressOffset - 1, 'a');
    EXPECT_EQ(Read(IndexOf({filling, "skipped", "listed"})), (Urls{filling, "listed"}));
    const std::string shorter = filling.substr(1);
    EXPECT_EQ(Read(IndexOf({shorter, "skipped", "listed"})), (Urls{shorter, "listed"}))
        << "the byte behind it is the block's last";
    const std::string shortest = filling.substr(2);
    EXPECT_EQ(Read(IndexOf({shortest, "next", "listed"})), (Urls{shortest, "next", "listed"}));
}

TEST(IEHistoryList, BlocksAreCountedFromTheFilesStartNotFromTheScans) {
    samples::ByteBuffer file;
    PutHeader(file, 200);
    file.PadTo(200);
    PutRecord(file, "first");
    file.PadTo(384);
    PutRecord(file, "second");
    EXPECT_EQ(Read(file.Take()), (Urls{"first", "second"}));
}

// --- The end of the file.

TEST(IEHistoryList, ARecordMayBeCutAnywhere) {
    const Bytes whole = IndexOf({"first", "Visited: anna@second", "third " + std::string(150, 'x')});
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        ExpectAsPlain(std::span(whole).first(size));
    }
}

TEST(IEHistoryList, ACutAddressIsListedAsFarAsItGoes) {
    const Bytes whole = IndexOf({"http://example.org/"});
    const auto cut = [&](std::size_t size) { return Read(std::span(whole).first(kBlock + size)); };
    EXPECT_EQ(cut(104 + 7), Urls{"http://"});
    EXPECT_EQ(cut(104), Urls{""});
    EXPECT_EQ(cut(4), Urls{""});
    EXPECT_EQ(cut(3), Urls{});
}

TEST(IEHistoryList, ATimeBehindTheEndIsNone) {
    samples::ByteBuffer file;
    PutHeader(file, kBlock);
    file.Align(kBlock);
    PutRecord(file, "x", samples::FileTimeOf({2009, 8, 4}));
    Bytes bytes = file.Take();
    bytes.resize(kBlock + 16);
    MemoryPlatform platform;
    platform.AddFile(kIndex, bytes);
    IEHistoryList list(platform, "");
    list.LoadIEHistory("anna");
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(list.DateAccessed(0), kDateOfNoTime);
}

TEST(IEHistoryList, WhatCanNoLongerBeReadEndsTheScan) {
    Urls addresses;
    for (int i = 0; i < 4000; ++i) {
        addresses.push_back("address " + std::to_string(i));
    }
    const Bytes whole = IndexOf(addresses);
    for (const std::size_t readable : {std::size_t{0}, std::size_t{20}, std::size_t{34}, kBlock, kWindow - 1,
                                       kWindow, kWindow + 2, kWindow + kBlock + 110, whole.size() - 1}) {
        MemoryPlatform platform;
        platform.AddFile(kIndex, whole).readableUpTo = readable;
        IEHistoryList list(platform, "");
        EXPECT_TRUE(list.LoadIEHistory("anna"));
        EXPECT_EQ(UrlsOf(list), PlainUrls(std::span(whole).first(readable))) << readable;
    }
}

/// A file of a terabyte: two records before the largest offset, one right behind it, and zeros.
class EndlessFile : public InputFile {
  public:
    explicit EndlessFile(std::uint64_t& farthest) : farthest_(farthest) {
        samples::ByteBuffer beginning;
        PutHeader(beginning, kLast);
        parts_ = {{0, beginning.Take()},
                  {kLast, Record("last")},
                  {kLast + kBlock, Record("Visited: anna@very last, and cut here")},
                  {kLast + 2 * kBlock, Record("beyond")}};
    }
    [[nodiscard]] std::uint64_t Size() const override { return std::uint64_t{1} << 40U; }
    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        std::fill(buffer.begin(), buffer.end(), std::byte{0});
        farthest_ = std::max(farthest_, offset);
        for (const auto& [start, bytes] : parts_) {
            for (std::size_t i = 0; i < bytes.size(); ++i) {
                if (start + i >= offset && start + i < offset + buffer.size()) {
                    buffer[static_cast<std::size_t>(start + i - offset)] = bytes[i];
                }
            }
        }
        return buffer.size();
    }

    static constexpr std::uint32_t kLast = 0x7FFFFF00;

  private:
    static Bytes Record(std::string_view address) {
        samples::ByteBuffer record;
        PutRecord(record, address);
        return record.Take();
    }
    std::uint64_t& farthest_;
    std::vector<std::pair<std::uint64_t, Bytes>> parts_;
};

TEST(IEHistoryList, AFileWithoutEndIsReadAsFarAsItsOffsetsGo) {
    std::uint64_t farthest = 0;
    MemoryPlatform platform;
    platform.AddFile(kIndex).open = [&] { return std::make_unique<EndlessFile>(farthest); };
    IEHistoryList list(platform, "");
    EXPECT_TRUE(list.LoadIEHistory("anna"));
    EXPECT_EQ(UrlsOf(list), (Urls{"last", "very last"}));
    EXPECT_LT(farthest, std::uint64_t{1} << 31U);
}

// --- The edges of the reader's window.

TEST(IEHistoryList, ARecordMayStraddleTheEdgeOfTheWindow) {
    for (std::size_t before = 0; before <= 2 * kBlock; ++before) {
        samples::ByteBuffer file;
        const std::size_t start = kWindow - before;
        PutHeader(file, static_cast<std::uint32_t>(start));
        file.PadTo(start);
        PutRecord(file, "http://straddling.example/", samples::FileTimeOf({2009, 8, 4}));
        file.PadTo(kWindow + 4 * kBlock);
        MemoryPlatform platform;
        platform.AddFile(kIndex, file.View());
        IEHistoryList list(platform, "");
        list.LoadIEHistory("anna");
        ASSERT_EQ(UrlsOf(list), Urls{"http://straddling.example/"}) << before;
        EXPECT_EQ(list.DateAccessed(0), 40029.0);
    }
}

TEST(IEHistoryList, TheSignatureIsFoundAcrossTheEdgeOfTheWindow) {
    for (std::uint32_t start = kBlock; start < kBlock + 4; ++start) {
        for (std::size_t edge = 1; edge <= 3; ++edge) {
            // The first step at or over the edge, and the last before it.
            for (const std::size_t back : {0U, 4U}) {
                const std::size_t steps = (edge * kWindow - start + 3) / 4;
                samples::ByteBuffer file;
                PutHeader(file, start);
                file.PadTo(start + 4 * steps - back);
                PutRecord(file, "found");
                EXPECT_EQ(Read(file.Take()), Urls{"found"}) << start << " " << edge << " " << back;
            }
        }
    }
}

TEST(IEHistoryList, AnAddressMayBeLongerThanTheWindow) {
    for (const std::size_t length : {kWindow - 1, kWindow, kWindow + 1, 3 * kWindow + 5}) {
        const std::string address(length, 'a');
        EXPECT_EQ(Read(IndexOf({"before", address, "after", "last"})).at(1), address);
        ExpectAsPlain(IndexOf({"before", address, "after", "last"}));
    }
}

TEST(IEHistoryList, ReadsAnyFileAsThePlainScanDoes) {
    std::mt19937 random(5);
    for (int round = 0; round < 60; ++round) {
        samples::ByteBuffer file;
        const std::size_t size = round % 10 == 0 ? 3 * kWindow : 6000;
        PutHeader(file, kHeader + static_cast<std::uint32_t>(random() % 300));
        while (file.Size() < size) {
            switch (random() % 5) {
                case 0:
                    file.Align(kBlock);
                    break;
                case 1:
                    file.PadTo(file.Size() + random() % 300, 'x');
                    break;
                case 2:
                    PutRecord(file, std::string(random() % 400, 'q'), 0, "LEAK");
                    break;
                default:
                    PutRecord(file, std::to_string(file.Size()) + (random() % 2 == 0 ? "@" : "") +
                                        std::string(random() % 60, 'z'));
                    break;
            }
        }
        ExpectAsPlain(file.View());
    }
}

TEST(IEHistoryList, ALargeFileOfNothingIsPassedOver) {
    samples::ByteBuffer file;
    PutHeader(file, kBlock);
    Bytes bytes = file.Take();
    bytes.resize(std::size_t{32} << 20U, std::byte{'x'});
    EXPECT_EQ(Read(bytes), Urls{});
}

// --- Order and range.

TEST(IEHistoryList, SortsByAddressAndMovesTheDates) {
    samples::ByteBuffer file;
    PutHeader(file, kBlock);
    for (const auto& [address, day] : std::vector<std::pair<std::string, unsigned>>{
             {"http://b/", 2}, {"http://a/", 3}, {"HTTP://c/", 4}, {"http://a/", 5}}) {
        file.Align(kBlock);
        PutRecord(file, address, samples::FileTimeOf({2009, 8, day}));
    }
    MemoryPlatform platform;
    platform.AddFile(kIndex, file.View());
    IEHistoryList list(platform, "");
    list.LoadIEHistory("anna");
    list.Sort();
    EXPECT_EQ(UrlsOf(list), (Urls{"HTTP://c/", "http://a/", "http://a/", "http://b/"}));
    EXPECT_EQ(list.DateAccessed(0), 40029.0);
    EXPECT_EQ(list.DateAccessed(3), 40027.0);
    EXPECT_EQ(list.DateAccessed(1) + list.DateAccessed(2), 40028.0 + 40030.0);
}

TEST(IEHistoryList, IndexesOutOfRangeHaveTheirOwnResults) {
    MemoryPlatform platform;
    platform.AddFile(kIndex, IndexOf({"a"}));
    IEHistoryList list(platform, "");
    for (const std::int32_t count : {0, 1, 2}) {
        EXPECT_EQ(list.Count(), count) << "each load appends";
        for (const std::int32_t index : {-1, list.Count(), std::numeric_limits<std::int32_t>::min()}) {
            EXPECT_EQ(list.URL(index), "");
            EXPECT_EQ(platform.DateToText(list.DateAccessed(index), DateForm::General), "1/1/1601");
        }
        list.LoadIEHistory("anna");
    }
}

}  // namespace
}  // namespace ostrevin
