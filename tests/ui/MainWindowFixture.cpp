#include "tests/ui/MainWindowFixture.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "ui/frmFilter.h"
#include "ui/frmFind.h"

namespace ostrevin {

MainWindowFixture::MainWindowFixture() {
    machine.AddPerson("S-1-5-18", "");
    for (const auto& [sid, name] : {std::pair<std::string, std::string>(kAnna, "anna"), {kBen, "ben"}}) {
        machine.AddPerson(sid, name);
        machine.AddUserAssist(sid, "UEME_RUNPATH:C:\\" + name + ".exe", 3, kSomeDay);
        machine.AddRecentDocument(name, "C:\\" + name + ".doc");
        machine.AddOpenSave(sid, {"C:\\" + name + ".txt"});
        machine.AddTypedURLs(sid, {"http://" + name + ".example/"});
    }
    ini.SetINIFileName(folder.Path("ostrevin.ini"));
    settings.SetINI(&ini);
}

void MainWindowFixture::Show() {
    machine.Load();
    window.Show();
}

void MainWindowFixture::ClickItem(ListView& list, const std::string& text) {
    for (std::size_t i = 1; i <= list.ItemCount(); ++i) {
        if (list.Item(i).Text() == text) {
            list.ClickItem(list.Item(i));
            return;
        }
    }
    throw std::runtime_error("no item " + text);
}

void MainWindowFixture::Filter(const std::string& text) {
    toolkit.onModal = [&](Form& form) {
        dynamic_cast<frmFilter&>(form).txtFilterString.Type(text);
        form.DefaultButton()->Press();
    };
    Press("FILTER");
}

void MainWindowFixture::Find(const std::string& text) {
    toolkit.onModal = [&](Form& form) {
        dynamic_cast<frmFind&>(form).txtFind.Type(text);
        form.DefaultButton()->Press();
    };
    window.mnuFind.Click.Raise();
}

Strings MainWindowFixture::Texts(const ListView& list, int column) {
    Strings texts;
    for (std::size_t i = 1; i <= list.ItemCount(); ++i) {
        texts.push_back(list.Item(i).Cell(column));
    }
    return texts;
}

std::string MainWindowFixture::Selected(const ListView& list) {
    return list.SelectedItem() == nullptr ? "" : list.SelectedItem()->Text();
}

std::string MainWindowFixture::Selected() const {
    return window.treeUsers.SelectedItem() == nullptr ? "" : window.treeUsers.SelectedItem()->Key();
}

Strings MainWindowFixture::Messages() const {
    Strings texts;
    for (const auto& box : toolkit.boxes) {
        EXPECT_EQ(box.caption, "Ostrevin");
        texts.push_back(box.text);
    }
    return texts;
}

Strings MainWindowFixture::Dialogs() const {
    Strings names;
    for (const std::string& entry : toolkit.log) {
        const std::string shown = "modal ";
        if (entry.starts_with(shown)) {
            names.push_back(entry.substr(shown.size()));
            EXPECT_NE(std::find(toolkit.log.begin(), toolkit.log.end(), "unload " + names.back()),
                      toolkit.log.end());
        }
    }
    return names;
}

}  // namespace ostrevin
