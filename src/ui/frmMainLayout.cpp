// Where the main window's controls stand, and how they follow its size.
#include <algorithm>

#include "ui/frmMain.h"

namespace ostrevin {
namespace {

constexpr double kMarginPixels = 10;
constexpr double kInnerMarginPixels = 2;
constexpr double kMinPageWidth = 200;

}  // namespace

void frmMain::DesignLayout() {
    Move(0, 0, 15300, 9300);
    SetMinPixelSize(480, 320);
    barTool.SetAlignment(Align::Top);
    barTool.SetHeight(540);
    barStatus.SetAlignment(Align::Bottom);
    barStatus.SetHeight(390);
    barStatus.AddPanel(0);
    barStatus.AddPanel(100);
    barStatus.AddPanel(100);
    tmrUpdateTime.SetInterval(100);
    treeUsers.Move(150, 630, 3300, 6000);
    TabStrip.Move(3600, 630, 9000, 6000);
    for (PictureBox* thumbnail : {&picRecentThumbnail, &picOpenSaveThumbnail}) {
        thumbnail->Move(0, 0, 4500, 4500);  // the ratio that the preview keeps
    }
}

void frmMain::Form_Resize() {
    if (WindowState() == WindowState::Minimized) {
        return;
    }
    const double marginX = ScaleX(kMarginPixels, ScaleMode::Pixel, ScaleMode());
    const double marginY = ScaleY(kMarginPixels, ScaleMode::Pixel, ScaleMode());
    if (TabStrip.Left() + marginX < ScaleWidth()) {
        TabStrip.SetWidth(ScaleWidth() - TabStrip.Left() - marginX);
    }
    // Tree and tab strip start at the same height, so the tree's top serves both.
    if (treeUsers.Top() + barStatus.Height() + marginY < ScaleHeight()) {
        const double height = ScaleHeight() - barStatus.Height() - treeUsers.Top() - marginY;
        treeUsers.SetHeight(height);
        TabStrip.SetHeight(height);
    }
    LayOutPages();
}

void frmMain::LayOutPages() {
    const double left = TabStrip.ClientLeft();
    const double top = TabStrip.ClientTop();
    const double width = std::max(TabStrip.ClientWidth(), kMinPageWidth);
    const double height = TabStrip.ClientHeight();
    for (Frame& page : fraTab) {
        page.Move(left, top, width, height);
    }
    const double marginX = ScaleX(kInnerMarginPixels, ScaleMode::Pixel, ScaleMode());
    const double marginY = ScaleY(kInnerMarginPixels, ScaleMode::Pixel, ScaleMode());
    const auto fillPage = [&](Control& control) {
        control.Move(marginX, marginY, width - 2 * marginX, height - 2 * marginY);
    };
    fillPage(lstProgram);
    fillPage(picRecent);
    LayOutDocumentPage(recentPage_);
    // The splitter places both document lists; only this one is placed here before.
    fillPage(lstOpenSave);
    fillPage(picOpenSave);
    LayOutDocumentPage(openSavePage_);
    fillPage(lstIEHistory);
    fillPage(lstTypedURL);
}

void frmMain::LayOutDocumentPage(const DocumentPage& page) {
    page.splitter.Resize();
    const bool show = ShowsPreview();
    page.thumbnail.SetVisible(show);
    page.splitter.SetVisible(2, show);
}

void frmMain::SetUpSplitter(const DocumentPage& page) {
    constexpr int kPreview = 2;
    page.splitter.SetContainer(page.pane);
    page.splitter.SetOrientation(Splitter::kSideBySide);
    page.splitter.SetControlMinSize(kPreview, 100);
    page.splitter.SetControlMaxSize(kPreview, 400);
    page.splitter.SetMaintainAspectRatio(kPreview, true);
    page.splitter.Bind(page.list, page.thumbnail);
    page.splitter.SetSplitterPosition(400);
}

}  // namespace ostrevin
