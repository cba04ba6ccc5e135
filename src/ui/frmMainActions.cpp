// What a click and a double-click on an item do, and the preview of documents.
#include <cstdint>
#include <exception>

#include "platform/Paths.h"
#include "ui/frmMain.h"

namespace ostrevin {
namespace {

constexpr int kProgramAccessible = 3;
constexpr int kDocumentAccessible = 1;

constexpr char kShowPreview[] = "ShowPreview";
constexpr char kTitle[] = "Ostrevin";

}  // namespace

/// Looks for the item's file, once.
void frmMain::WriteAccessible(ListItem& item, int subItem) {
    if (item.SubItem(subItem).empty()) {
        item.SetSubItem(subItem, FileExists(parts_.platform, item.Text()) ? "Yes" : "No");
    }
}

void frmMain::lstProgram_ItemClick(ListItem& item) {
    WriteAccessible(item, kProgramAccessible);
}

void frmMain::Document_ItemClick(const DocumentPage& page, ListItem& item) {
    WriteAccessible(item, kDocumentAccessible);
    page.thumbnail.SetPicture(nullptr);
    if (!ShowsPreview() || item.SubItem(kDocumentAccessible) != "Yes") {
        return;
    }
    try {
        page.thumbnail.SetPicture(ThumbnailFor(page));
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch)
        // A file of which no picture can be made leaves the box empty.
    }
}

/// The thumbnail of the selected document, of the size of its box; null when there is none.
PicturePtr frmMain::ThumbnailFor(const DocumentPage& page) {
    PictureBox& box = page.thumbnail;
    const double points = GetToolkit().PointsPerPixel();
    const double width = box.ScaleX(box.ScaleWidth(), box.ScaleMode(), ScaleMode::Pixel) * points;
    const double height = box.ScaleY(box.ScaleHeight(), box.ScaleMode(), ScaleMode::Pixel) * points;
    const bool made = thumbnails_.Generate(page.list.SelectedItem()->Text(), static_cast<std::int16_t>(width),
                                           static_cast<std::int16_t>(height));
    return made ? thumbnails_.Picture() : nullptr;
}

void frmMain::lstProgram_DblClick() {
    OnExistingFile(lstProgram, [this](const std::string& path) { parts_.platform.StartProgram(path); });
}

void frmMain::Document_DblClick(const ListView& list) {
    OnExistingFile(list, [this](const std::string& path) { OpenItem(path); });
}

void frmMain::OnExistingFile(const ListView& list, const std::function<void(const std::string&)>& action) {
    try {
        const ListItem* item = list.SelectedItem();
        if (item != nullptr && FileExists(parts_.platform, item->Text())) {
            action(item->Text());
        }
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch)
        // What cannot be opened is not spoken of.
    }
}

void frmMain::Address_DblClick(const ListView& list) {
    if (const ListItem* item = list.SelectedItem()) {
        OpenItem(item->Text());
    }
}

/// Opens what the item names, and tells why not where that is told.
void frmMain::OpenItem(const std::string& item) {
    ShellOpenDocument(parts_.platform, item);
    const std::string refusal = parts_.platform.OpeningRefusal();
    if (!refusal.empty()) {
        MsgBox(refusal, kTitle);
    }
}

bool frmMain::ShowsPreview() const {
    return parts_.settings.GetINIOption(kShowPreview) == "True";
}

void frmMain::TogglePreview() {
    const bool show = !mnuShowPreview.Checked();
    mnuShowPreview.SetChecked(show);
    barTool.Button("SHOWPREVIEW").SetValue(show ? ToolButton::kPressed : ToolButton::kUp);
    parts_.settings.SetINIOption(kShowPreview, show ? "True" : "False");
    LayOutPages();
}

}  // namespace ostrevin
