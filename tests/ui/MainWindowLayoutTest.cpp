// Where the main window's controls stand at every size of it.
#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>
#include <vector>

#include "tests/ui/MainWindowFixture.h"

namespace ostrevin {
namespace {

using Place = std::array<double, 4>;  // left, top, width, height

Place PlaceOf(const Control& control) {
    return {control.Left(), control.Top(), control.Width(), control.Height()};
}

/// At a number of pixels per inch.
class MainWindowLayoutTest : public MainWindowFixture, public ::testing::WithParamInterface<double> {
  protected:
    static constexpr int kBar = 5;

    MainWindowLayoutTest() { toolkit.pixelsPerInch = GetParam(); }

    void ShowAt(int pixelWidth, int pixelHeight) {
        Show();
        Resize(pixelWidth, pixelHeight);
    }
    void Resize(int pixelWidth, int pixelHeight) {
        window.Resized(pixelWidth, pixelHeight, WindowState::Normal);
    }
    void ShowPreview() { ini.AddVariable("ShowPreview", "True"); }
    /// With panes in which the bar can stand from 390 pixels to 680.
    void ShowWithRoomToDrag() {
        ShowPreview();
        ShowAt(static_cast<int>(Pixels(window.TabStrip.Left())) + 10 + 800, 768);
    }

    [[nodiscard]] double Twips(double pixels) const { return pixels * 1440 / GetParam(); }
    [[nodiscard]] double Pixels(double twips) const { return twips * GetParam() / 1440; }
    [[nodiscard]] std::vector<Place> AllPlaces() const {
        std::vector<Place> places;
        AddPlaces(window, places);
        return places;
    }

    /// A press at pixelX of a pane, a move to pixelTo and the release.
    void Drag(PictureBox& pane, double pixelX, double pixelTo, int button = 1) {
        pane.MouseDown.Raise(button, 0, Twips(pixelX), Twips(50));
        pane.MouseMove.Raise(button, 0, Twips(pixelTo), Twips(50));
        pane.MouseUp.Raise(button, 0, Twips(pixelTo), Twips(50));
    }
    [[nodiscard]] double BarOf(const ListView& list) const { return Pixels(list.Width()); }

    const std::array<std::pair<PictureBox*, std::pair<ListView*, PictureBox*>>, 2> pages = {{
        {&window.picRecent, {&window.lstRecent, &window.picRecentThumbnail}},
        {&window.picOpenSave, {&window.lstOpenSave, &window.picOpenSaveThumbnail}},
    }};

  private:
    static void AddPlaces(const Container& container, std::vector<Place>& places) {
        for (const Control* control : container.Controls()) {
            places.push_back(PlaceOf(*control));
            if (const auto* inner = dynamic_cast<const Container*>(control)) {
                AddPlaces(*inner, places);
            }
        }
    }
};

INSTANTIATE_TEST_SUITE_P(PixelsPerInch, MainWindowLayoutTest, ::testing::Values(96.0, 120.0, 192.0));

constexpr std::array<std::pair<int, int>, 6> kSizes = {
    {{640, 480}, {800, 600}, {1024, 768}, {1366, 700}, {1920, 1080}, {3840, 2160}}};

TEST_P(MainWindowLayoutTest, TreeAndTabsFillTheWindowWithTenPixelsAround) {
    Show();
    const Place tree = PlaceOf(window.treeUsers);
    const Place tabs = PlaceOf(window.TabStrip);
    for (const auto& [width, height] : kSizes) {
        Resize(width, height);
        EXPECT_DOUBLE_EQ(Pixels(window.TabStrip.Left() + window.TabStrip.Width()) + 10, width);
        EXPECT_DOUBLE_EQ(Pixels(window.treeUsers.Top() + window.treeUsers.Height()) + 10,
                         Pixels(window.barStatus.Top()));
        EXPECT_EQ(window.TabStrip.Height(), window.treeUsers.Height());
        EXPECT_DOUBLE_EQ(Pixels(window.barStatus.Top() + window.barStatus.Height()), height);
        EXPECT_EQ(window.treeUsers.Width(), tree[2]) << "only the tabs take what there is of width";
        EXPECT_EQ(PlaceOf(window.treeUsers)[0], tree[0]);
        EXPECT_EQ(PlaceOf(window.treeUsers)[1], tree[1]);
        EXPECT_EQ(PlaceOf(window.TabStrip)[0], tabs[0]);
        EXPECT_EQ(PlaceOf(window.TabStrip)[1], tabs[1]);
    }
}

TEST_P(MainWindowLayoutTest, PagesFillTheTabsAndListsTheirPagesButForTwoPixels) {
    Show();
    for (const auto& [width, height] : kSizes) {
        Resize(width, height);
        const Place page = {window.TabStrip.ClientLeft(), window.TabStrip.ClientTop(),
                            window.TabStrip.ClientWidth(), window.TabStrip.ClientHeight()};
        for (const Frame& frame : window.fraTab) {
            EXPECT_EQ(PlaceOf(frame), page);
        }
        const Place inside = {Twips(2), Twips(2), page[2] - 2 * Twips(2), page[3] - 2 * Twips(2)};
        for (const Control* control :
             std::initializer_list<const Control*>{&window.lstProgram, &window.picRecent, &window.picOpenSave,
                                                   &window.lstIEHistory, &window.lstTypedURL}) {
            EXPECT_EQ(PlaceOf(*control), inside) << control->Name();
        }
    }
}

TEST_P(MainWindowLayoutTest, AWindowTooNarrowKeepsTheWidthOfItsTabs) {
    ShowAt(800, 600);
    const double width = window.TabStrip.Width();
    const int edge = static_cast<int>(Pixels(window.TabStrip.Left())) + 10;
    Resize(edge, 700);
    EXPECT_EQ(window.TabStrip.Width(), width) << "as long as the margin reaches the edge";
    EXPECT_DOUBLE_EQ(Pixels(window.treeUsers.Top() + window.treeUsers.Height()) + 10,
                     Pixels(window.barStatus.Top()));
    Resize(edge + 1, 700);
    EXPECT_DOUBLE_EQ(Pixels(window.TabStrip.Width()), 1);
}

TEST_P(MainWindowLayoutTest, AWindowTooLowKeepsTheHeightOfTreeAndTabs) {
    ShowAt(800, 600);
    const double height = window.treeUsers.Height();
    const int edge = static_cast<int>(Pixels(window.treeUsers.Top() + window.barStatus.Height())) + 10;
    Resize(900, edge);
    EXPECT_EQ(window.treeUsers.Height(), height);
    EXPECT_EQ(window.TabStrip.Height(), height);
    EXPECT_DOUBLE_EQ(Pixels(window.TabStrip.Left() + window.TabStrip.Width()) + 10, 900);
    Resize(900, edge + 1);
    EXPECT_DOUBLE_EQ(Pixels(window.treeUsers.Height()), 1);
    EXPECT_EQ(window.TabStrip.Height(), window.treeUsers.Height());
}

TEST_P(MainWindowLayoutTest, APageIsNeverNarrowerThanTwoHundredUnits) {
    ShowAt(800, 600);
    Resize(static_cast<int>(Pixels(window.TabStrip.Left())) + 11, 600);
    ASSERT_LT(window.TabStrip.ClientWidth(), 200);
    for (const Frame& frame : window.fraTab) {
        EXPECT_EQ(frame.Width(), 200);
    }
    EXPECT_EQ(window.lstProgram.Width(), 200 - 2 * Twips(2));
}

TEST_P(MainWindowLayoutTest, MinimisingAndRestoringChangesNothing) {
    ShowPreview();
    ShowAt(1024, 768);
    const std::vector<Place> before = AllPlaces();
    window.Resized(0, 0, WindowState::Minimized);
    EXPECT_EQ(AllPlaces(), before);
    Resize(1024, 768);
    EXPECT_EQ(AllPlaces(), before);
    window.treeUsers.SetHeight(Twips(7));
    window.Resized(1024, 768, WindowState::Minimized);
    EXPECT_EQ(window.treeUsers.Height(), Twips(7)) << "nothing is laid out";
}

TEST_P(MainWindowLayoutTest, WithoutPreviewTheListHasThePageToItself) {
    ShowAt(1024, 768);
    for (const auto& [pane, shown] : pages) {
        EXPECT_EQ(PlaceOf(*shown.first), (Place{0, 0, pane->ScaleWidth(), pane->ScaleHeight()}));
        EXPECT_TRUE(shown.first->Visible());
        EXPECT_FALSE(shown.second->Visible());
    }
}

TEST_P(MainWindowLayoutTest, ThePreviewStandsBesideTheListWithABarBetween) {
    ShowAt(1024, 768);
    window.TogglePreview();
    for (const auto& [pane, shown] : pages) {
        const auto& [list, thumbnail] = shown;
        EXPECT_TRUE(thumbnail->Visible());
        EXPECT_EQ(list->Left(), 0);
        EXPECT_EQ(list->Height(), pane->ScaleHeight());
        const double right = pane->ScaleWidth() - list->Width() - Twips(kBar);
        EXPECT_DOUBLE_EQ(thumbnail->Width(), thumbnail->Height()) << "it keeps its ratio";
        EXPECT_LE(thumbnail->Width(), right);
        EXPECT_NEAR(thumbnail->Left() + thumbnail->Width() / 2, pane->ScaleWidth() - right / 2, 1)
            << "in the middle of what the list leaves";
        EXPECT_NEAR(thumbnail->Top() + thumbnail->Height() / 2, pane->ScaleHeight() / 2, 1);
    }
    window.TogglePreview();
    for (const auto& [pane, shown] : pages) {
        EXPECT_EQ(PlaceOf(*shown.first), (Place{0, 0, pane->ScaleWidth(), pane->ScaleHeight()}));
        EXPECT_FALSE(shown.second->Visible());
    }
}

TEST_P(MainWindowLayoutTest, TheBarBeginsAtFourHundredPixelsWithinTheBoundsOfThePreview) {
    ShowPreview();
    Show();
    for (const auto& [pane, shown] : pages) {
        const double left = Pixels(pane->ScaleWidth()) - kBar;
        ASSERT_GT(left, 500);
        EXPECT_NEAR(BarOf(*shown.first), std::max(400.0, left - 400), 0.51) << pane->Name();
    }
}

TEST_P(MainWindowLayoutTest, ThePreviewKeepsItsBoundsAtEverySize) {
    ShowPreview();
    Show();
    for (const auto& [width, height] : kSizes) {
        Resize(width, height);
        for (const auto& [pane, shown] : pages) {
            const double preview = Pixels(pane->ScaleWidth()) - BarOf(*shown.first) - kBar;
            EXPECT_GE(preview, 99.5) << width;
            EXPECT_LE(preview, 400.5) << width;
        }
    }
}

TEST_P(MainWindowLayoutTest, TheBarIsDraggedWithinTheBoundsOfThePreview) {
    ShowWithRoomToDrag();
    for (const auto& [pane, shown] : pages) {
        const double total = Pixels(pane->ScaleWidth());
        Drag(*pane, BarOf(*shown.first) + 2, 452);
        EXPECT_DOUBLE_EQ(BarOf(*shown.first), 450);
        EXPECT_EQ(toolkit.cursor, CursorShape::SizeWestEast);
        EXPECT_FALSE(toolkit.clip) << "the mouse is free again";
        Drag(*pane, 450, 2000);
        EXPECT_NEAR(BarOf(*shown.first), total - kBar - 100, 0.51);
        Drag(*pane, BarOf(*shown.first) + 1, -50);
        EXPECT_NEAR(BarOf(*shown.first), total - kBar - 400, 0.51);
    }
}

TEST_P(MainWindowLayoutTest, EachPageHasItsOwnBar) {
    ShowWithRoomToDrag();
    const double before = BarOf(window.lstRecent);
    Drag(window.picOpenSave, before, 430);
    EXPECT_DOUBLE_EQ(BarOf(window.lstRecent), before);
    EXPECT_DOUBLE_EQ(BarOf(window.lstOpenSave), 430);
}

TEST_P(MainWindowLayoutTest, NothingIsDraggedBesideTheBarNorWithoutPreview) {
    ShowWithRoomToDrag();
    const std::vector<Place> before = AllPlaces();
    const double bar = BarOf(window.lstRecent);
    for (const auto& [pane, shown] : pages) {
        Drag(*pane, bar - 1, 450);
        Drag(*pane, bar + kBar, 450);
        Drag(*pane, bar + 2, 450, 2);
    }
    EXPECT_EQ(AllPlaces(), before);
    window.TogglePreview();
    const std::vector<Place> without = AllPlaces();
    Drag(window.picRecent, bar + 2, 450);
    EXPECT_EQ(AllPlaces(), without);
    window.TogglePreview();
    EXPECT_EQ(AllPlaces(), before) << "the bar is where it was";
}

TEST_P(MainWindowLayoutTest, TheLayoutPlacesOneDocumentListBeforeItsSplitterDoes) {
    ShowPreview();
    ShowAt(1024, 768);
    const ListRecorder recent(window.lstRecent);
    const ListRecorder openSave(window.lstOpenSave);
    window.TogglePreview();
    window.TogglePreview();
    const double page = window.picRecent.Width();
    const double narrow = window.lstRecent.Width();
    EXPECT_EQ(recent.widths, (std::vector<double>{page, narrow}));
    EXPECT_EQ(openSave.widths, (std::vector<double>{page, narrow, page, page, page, narrow}));
}

class HigherTreeTest : public MainWindowFixture {};

/// Where a pixel has 15 twips across and 10 down.
class UnevenLayoutTest : public MainWindowFixture {
  protected:
    UnevenLayoutTest() {
        toolkit.pixelsPerInchY = 144;
        ini.AddVariable("ShowPreview", "True");
        Show();
        window.Resized(1400, 1100, WindowState::Normal);
    }
};

TEST_F(UnevenLayoutTest, MarginsAreMeasuredInTheirOwnDirection) {
    EXPECT_DOUBLE_EQ(window.TabStrip.Left() + window.TabStrip.Width() + 10 * 15, 1400 * 15);
    EXPECT_DOUBLE_EQ(window.treeUsers.Top() + window.treeUsers.Height() + 10 * 10, window.barStatus.Top());
    EXPECT_EQ(window.TabStrip.Height(), window.treeUsers.Height());
    for (const Control* control :
         std::initializer_list<const Control*>{&window.lstProgram, &window.picRecent, &window.picOpenSave,
                                               &window.lstIEHistory, &window.lstTypedURL}) {
        EXPECT_EQ(PlaceOf(*control), (Place{2 * 15, 2 * 10, window.fraTab[0].Width() - 4 * 15,
                                            window.fraTab[0].Height() - 4 * 10}))
            << control->Name();
    }
}

TEST_F(UnevenLayoutTest, TheEdgesAtWhichSizesStayAreThoseOfTheirDirection) {
    const double width = window.TabStrip.Width();
    const double height = window.treeUsers.Height();
    const int narrow = static_cast<int>((window.TabStrip.Left() + 10 * 15) / 15);
    const int low = static_cast<int>((window.treeUsers.Top() + window.barStatus.Height() + 10 * 10) / 10);
    window.Resized(narrow, low, WindowState::Normal);
    EXPECT_EQ(window.TabStrip.Width(), width);
    EXPECT_EQ(window.treeUsers.Height(), height);
    window.Resized(narrow + 1, low + 1, WindowState::Normal);
    EXPECT_DOUBLE_EQ(window.TabStrip.Width(), 15);
    EXPECT_NEAR(window.treeUsers.Height(), 10, 10);
    EXPECT_LT(window.treeUsers.Height(), height);
}

TEST_F(UnevenLayoutTest, TheBarIsDraggedAcross) {
    const double before = window.lstRecent.Width() / 15;
    window.picRecent.MouseDown.Raise(1, 0, (before + 2) * 15, 50);
    window.picRecent.MouseMove.Raise(1, 0, (before + 52) * 15, 700);
    EXPECT_DOUBLE_EQ(window.lstRecent.Width() / 15, before + 50);
}

TEST_F(HigherTreeTest, TheTreesTopIsThatOfBothHeights) {
    Show();
    window.treeUsers.Move(window.treeUsers.Left(), 1230, window.treeUsers.Width(), window.treeUsers.Height());
    const double top = window.TabStrip.Top();
    ASSERT_NE(top, 1230);
    window.Resized(1024, 768, WindowState::Normal);
    const double height = window.barStatus.Top() - 150 - 1230;
    EXPECT_EQ(window.treeUsers.Height(), height);
    EXPECT_EQ(window.TabStrip.Height(), height) << "counted from the tree's top, not from its own";
    EXPECT_EQ(window.TabStrip.Top(), top);
    // As high as both margins, so that the tree has no room, and the strip would have.
    const int low = static_cast<int>((1230 + window.barStatus.Height() + 150) / 15);
    window.Resized(1024, low, WindowState::Normal);
    EXPECT_EQ(window.TabStrip.Height(), height);
}

}  // namespace
}  // namespace ostrevin
