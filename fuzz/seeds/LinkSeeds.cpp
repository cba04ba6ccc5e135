// Writes the inputs from which the shortcuts' fuzz target starts.
#include <string>

#include "fuzz/seeds/Seeds.h"
#include "tools/writers/LinkWriter.h"

namespace {

using ostrevin::fuzz::WriteSeed;
using namespace ostrevin::samples;

Link Local() {
    Link link;
    link.items = ItemsForPath("C:\\Docs\\a.txt", {});
    link.info.emplace();
    link.info->volume.emplace();
    link.info->volume->label = "DISK";
    link.info->localBasePath = "C:\\Docs\\";
    link.info->suffix = "a.txt";
    return link;
}

Link Network() {
    Link link;
    link.info.emplace();
    link.info->network.emplace();
    link.info->network->share = "\\\\server\\share";
    link.info->network->device = "Z:";
    link.info->suffix = "b.doc";
    return link;
}

Link WithStrings(bool unicode) {
    Link link = Local();
    link.unicode = unicode;
    link.description = "Description";
    link.relativePath = "..\\a.txt";
    link.workingFolder = "C:\\Docs";
    link.arguments = "/x /y";
    link.iconFile = "%SystemRoot%\\system32\\shell32.dll";
    link.iconIndex = -3;
    link.hotKey = 0x0641;
    link.showCommand = 3;
    return link;
}

void WriteSeeds(const std::string& folder) {
    WriteSeed(folder, "empty", WriteLink({}));
    WriteSeed(folder, "local", WriteLink(Local()));
    WriteSeed(folder, "network", WriteLink(Network()));
    WriteSeed(folder, "strings", WriteLink(WithStrings(true)));
    WriteSeed(folder, "strings-single-byte", WriteLink(WithStrings(false)));
    Link unicode = Local();
    unicode.info->unicodeLocalBasePath = "C:\\\u0414\u043E\u043A\\";
    unicode.info->unicodeSuffix = "\u0430.txt";
    WriteSeed(folder, "unicode", WriteLink(unicode));
    Link unicodeShare = Network();
    unicodeShare.info->network->unicodeShare = "\\\\server\\\u0434";
    unicodeShare.info->network->unicodeDevice = "Z:";
    WriteSeed(folder, "unicode-share", WriteLink(unicodeShare));
    Link items;
    items.items = ItemsForPath("D:\\Folder\\long name.exe", {});
    items.specialFolder = LinkSpecialFolder{5, 20};
    WriteSeed(folder, "items", WriteLink(items));
    Link environment;
    environment.environmentPath = "%SystemRoot%\\notepad.exe";
    environment.iconEnvironmentPath = "%SystemRoot%\\notepad.exe";
    environment.tracker = LinkTracker{"machine"};
    WriteSeed(folder, "environment", WriteLink(environment));
}

}  // namespace

int main(int argumentCount, char** arguments) {
    return ostrevin::fuzz::SeedsMain(argumentCount, arguments, WriteSeeds);
}
