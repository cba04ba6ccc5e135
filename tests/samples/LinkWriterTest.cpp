#include <gtest/gtest.h>

#include "tests/samples/LinkOracle.h"
#include "tests/samples/Oracle.h"
#include "tools/writers/LinkWriter.h"
#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

class LinkWriterTest : public ::testing::Test {
  protected:
    void SetUp() override { OSTREVIN_NEED("lnkinfo", "liblnk-utils"); }
    static void Check(const Link& link) { ExpectLnkinfoAgrees(link, WriteLink(link)); }

    static Link Local() {
        const std::uint64_t time = FileTimeOf({2009, 8, 4, 15, 22, 18});
        Link link;
        link.created = time;
        link.modified = time + kDay;
        link.accessed = time + 2 * kDay;
        link.size = 69120;
        FileItem last;
        last.modified = time;
        link.items = ItemsForPath("C:\\Docs\\Müller.txt", last);
        LinkInfo info;
        info.volume = LinkVolume{3, 0x1234ABCD, "DISK", {}};
        info.localBasePath = "C:\\Docs\\M\xFCller.txt";
        link.info = info;
        return link;
    }
};

TEST_F(LinkWriterTest, Empty) {
    Check(Link());
}

TEST_F(LinkWriterTest, LocalFile) {
    Check(Local());
}

TEST_F(LinkWriterTest, LocalFileWithUnicodeForms) {
    Link link = Local();
    link.info->unicodeLocalBasePath = "C:\\Docs\\Мюллер\\";
    link.info->unicodeSuffix = "текст.txt";
    link.info->volume->unicodeLabel = "Том";
    Check(link);
}

TEST_F(LinkWriterTest, EveryString) {
    for (const bool unicode : {true, false}) {
        Link link = Local();
        link.unicode = unicode;
        link.description = "Beschreibung – é";
        link.relativePath = "..\\Docs\\x.txt";
        link.workingFolder = "C:\\Docs";
        link.arguments = "/a \"b c\"";
        link.iconFile = "C:\\icons.dll";
        link.iconIndex = -17;
        link.showCommand = 7;
        link.hotKey = 0x0641;
        Check(link);
    }
}

TEST_F(LinkWriterTest, EveryBlock) {
    Link link = Local();
    link.environmentPath = "%SystemRoot%\\system32\\notepad.exe";
    link.iconEnvironmentPath = "%SystemRoot%\\system32\\shell32.dll";
    link.specialFolder = LinkSpecialFolder{5, 0x14};
    link.tracker = LinkTracker{"kontor-7"};
    Check(link);
}

TEST_F(LinkWriterTest, NetworkFile) {
    Link link;
    LinkInfo info;
    info.network = LinkNetwork{"\\\\server\\share", "Z:", 0x00020000, {}, {}};
    info.suffix = "folder\\file.doc";
    link.info = info;
    Check(link);
    link.info->network->device.reset();
    link.info->network->provider.reset();
    Check(link);
    link.info->network->unicodeShare = "\\\\server\\общая";
    link.info->network->unicodeDevice = "Z:";
    link.info->unicodeSuffix = "папка\\файл.doc";
    Check(link);
}

TEST_F(LinkWriterTest, IdentifierListAlone) {
    Link link = Local();
    link.info.reset();
    Check(link);
}

TEST(LinkBlockTest, RefusesAPathThatDoesNotFit) {
    Link link;
    link.environmentPath = std::string(260, 'x');
    EXPECT_THROW(WriteLink(link), std::length_error);
}

}  // namespace
}  // namespace ostrevin::samples
