// write_shortcut FILE: has the shell write a shortcut, for readers of another system to look at.

#include "platform/windows/WindowsPlatform.h"
#include "sources/cShellLinkA.h"

int main(int count, char** arguments) {
    ostrevin::WindowsPlatform platform;
    ostrevin::cShellLinkA link(platform);
    const ostrevin::ShortcutFields fields{"C:\\windows\\notepad.exe",
                                          "/a \"b\"",
                                          "C:\\windows",
                                          "A shortcut",
                                          "C:\\windows\\explorer.exe",
                                          5,
                                          7,
                                          0x0641};
    return count == 2 && link.CreateLink(arguments[1], fields) ? 0 : 1;
}
