#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "controls/Form.h"
#include "tests/support/TestToolkit.h"
#include "widgets/Splitter.h"

namespace ostrevin {
namespace {

constexpr int kLeft = 1;
constexpr int kRight = 2;
constexpr int kNoShift = 0;
constexpr double kPixel = 15;  // in twips

/// A splitter over a box of 200 x 100 pixels, in twips, with two frames on it.
class SplitterTest : public ::testing::Test {
  protected:
    SplitterTest() {
        box.Move(300, 450, 200 * kPixel, 100 * kPixel);
        first.Move(0, 0, 40 * kPixel, 20 * kPixel);
        second.Move(0, 0, 10 * kPixel, 20 * kPixel);
        splitter.SetContainer(box);
    }

    void BindSideBySide() {
        splitter.SetOrientation(Splitter::kSideBySide);
        splitter.Bind(first, second);
    }
    void Press(double pixelX, double pixelY, int button = kLeft) {
        splitter.MouseDown(button, kNoShift, pixelX * kPixel, pixelY * kPixel);
    }
    void MoveMouse(double pixelX, double pixelY) {
        splitter.MouseMove(kLeft, kNoShift, pixelX * kPixel, pixelY * kPixel);
    }
    /// Presses in the middle of a bar side by side and moves the mouse by some pixels.
    void Drag(double pixels) {
        const double x = splitter.SplitterPosition() + 2;
        Press(x, 50);
        MoveMouse(x + pixels, 50);
    }
    /// Left, top, width and height in pixels.
    static std::vector<double> PlaceOf(const Control& control) {
        return {control.Left() / kPixel, control.Top() / kPixel, control.Width() / kPixel,
                control.Height() / kPixel};
    }

    testing::TestToolkit toolkit;
    Form form{toolkit, "form"};
    PictureBox box{&form, "box"};
    Frame first{&box, "first"};
    Frame second{&box, "second"};
    Splitter splitter{toolkit};
};

using Place = std::vector<double>;
using Strings = std::vector<std::string>;

TEST_F(SplitterTest, BeginsStackedWithABarOfFivePixelsAndNoBounds) {
    EXPECT_EQ(splitter.SplitterSize(), 5);
    EXPECT_EQ(splitter.SplitterPosition(), 0);
    EXPECT_EQ(splitter.Orientation(), 1);
    for (const int index : {1, 2}) {
        EXPECT_TRUE(splitter.Visible(index));
        EXPECT_FALSE(splitter.MaintainAspectRatio(index));
        EXPECT_EQ(splitter.ControlMaxSize(index), -1);
        EXPECT_EQ(splitter.ControlMinSize(index), -1);
    }
    EXPECT_EQ(toolkit.log, Strings{"load cursor 32645"});
}

TEST_F(SplitterTest, AnIndexOtherThanOneMeansTheSecond) {
    splitter.SetControlMinSize(7, 12);
    splitter.SetControlMaxSize(0, 30);
    splitter.SetMaintainAspectRatio(-1, true);
    EXPECT_EQ(splitter.ControlMinSize(2), 12);
    EXPECT_EQ(splitter.ControlMaxSize(2), 30);
    EXPECT_TRUE(splitter.MaintainAspectRatio(2));
    EXPECT_EQ(splitter.ControlMinSize(1), -1);
    EXPECT_EQ(splitter.ControlMaxSize(1), -1);
    EXPECT_FALSE(splitter.MaintainAspectRatio(1));
    splitter.Bind(first, second);
    splitter.SetVisible(3, false);
    EXPECT_FALSE(splitter.Visible(2));
    EXPECT_FALSE(second.Visible());
    EXPECT_TRUE(first.Visible());
}

TEST_F(SplitterTest, OrientationWrittenWithItsCurrentValueLoadsNoCursor) {
    toolkit.log.clear();
    splitter.SetOrientation(1);
    EXPECT_TRUE(toolkit.log.empty());
    splitter.SetOrientation(2);
    splitter.SetOrientation(2);
    EXPECT_EQ(toolkit.log, Strings{"load cursor 32644"});
    EXPECT_EQ(toolkit.cursors, (std::multiset<CursorShape>{CursorShape::SizeWestEast}));
}

TEST_F(SplitterTest, AnyOrientationButSideBySideIsStacked) {
    splitter.SetOrientation(2);
    toolkit.log.clear();
    splitter.SetOrientation(9);
    EXPECT_EQ(splitter.Orientation(), 9);
    EXPECT_EQ(toolkit.log, Strings{"load cursor 32645"});
    EXPECT_EQ(toolkit.cursors.size(), 1U);
    splitter.Bind(first, second);
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 200, 48}));
}

TEST_F(SplitterTest, BindPutsTheBarIntoTheMiddleHalvesToTheEvenPixel) {
    BindSideBySide();
    EXPECT_EQ(splitter.SplitterPosition(), 98);  // 97.5
    box.SetWidth(202 * kPixel);
    splitter.Bind(first, second);
    EXPECT_EQ(splitter.SplitterPosition(), 98);  // 98.5
    splitter.SetOrientation(Splitter::kStacked);
    splitter.SetSplitterSize(8);
    splitter.Bind(first, second);
    EXPECT_EQ(splitter.SplitterPosition(), 46);
}

TEST_F(SplitterTest, BindInABoxSmallerThanTheBarPutsTheBarAtTheBeginning) {
    splitter.SetSplitterSize(300);
    BindSideBySide();
    EXPECT_EQ(splitter.SplitterPosition(), 0);
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 0, 100}));
    EXPECT_EQ(PlaceOf(second), (Place{200, 0, 0, 100}));
}

TEST_F(SplitterTest, SideBySideTheControlsShareTheWidth) {
    BindSideBySide();
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 98, 100}));
    EXPECT_EQ(PlaceOf(second), (Place{103, 0, 97, 100}));
}

TEST_F(SplitterTest, StackedTheControlsShareTheHeight) {
    splitter.Bind(first, second);
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 200, 48}));
    EXPECT_EQ(PlaceOf(second), (Place{0, 53, 200, 47}));
}

TEST_F(SplitterTest, ABoxMeasuredInPixelsIsSharedAlike) {
    box.SetScaleMode(ScaleMode::Pixel);
    BindSideBySide();
    EXPECT_EQ(splitter.SplitterPosition(), 98);
    EXPECT_EQ(first.Width(), 98);
    EXPECT_EQ(second.Left(), 103);
    splitter.MouseDown(kLeft, kNoShift, 98, 0);
    splitter.MouseMove(kLeft, kNoShift, 60.4, 0);
    EXPECT_EQ(splitter.SplitterPosition(), 60);
}

TEST_F(SplitterTest, APositionTakesEffectWithTheNextResize) {
    BindSideBySide();
    splitter.SetSplitterPosition(20);
    EXPECT_EQ(first.Width(), 98 * kPixel);
    splitter.Resize();
    EXPECT_EQ(first.Width(), 20 * kPixel);
}

TEST_F(SplitterTest, ResizeBringsAPositionIntoTheBox) {
    BindSideBySide();
    splitter.SetSplitterPosition(-5);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 0);
    splitter.SetSplitterPosition(200);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 200);
    splitter.SetSplitterPosition(201);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 199);
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 199, 100}));
    EXPECT_EQ(PlaceOf(second), (Place{200, 0, 0, 100}));
}

TEST_F(SplitterTest, ResizeOfABoxWithoutSizeLeavesNoNegativeSize) {
    BindSideBySide();
    box.Move(0, 0, 0, 0);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 0);
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 0, 0}));
    EXPECT_EQ(PlaceOf(second), (Place{0, 0, 0, 0}));
}

TEST_F(SplitterTest, ResizeKeepsTheBoundsTheSecondControlsOverTheFirsts) {
    BindSideBySide();
    splitter.SetControlMinSize(1, 120);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 120);
    splitter.SetControlMinSize(1, -1);
    splitter.SetControlMaxSize(1, 30);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 30);
    splitter.SetControlMaxSize(2, 100);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 95);
    splitter.SetControlMaxSize(2, -1);
    splitter.SetControlMinSize(1, 120);
    splitter.SetControlMaxSize(1, -1);
    splitter.SetControlMinSize(2, 90);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 105);
}

TEST_F(SplitterTest, ABoundOfZeroCounts) {
    BindSideBySide();
    splitter.SetControlMaxSize(1, 0);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 0);
    splitter.SetControlMaxSize(1, -1);
    splitter.SetControlMaxSize(2, 0);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 195);
    splitter.SetControlMaxSize(2, -1);
    splitter.SetControlMinSize(2, 0);
    splitter.SetSplitterPosition(198);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 195);
}

TEST_F(SplitterTest, BothBoundsOfTheSecondLookAtTheRestBeforeEither) {
    BindSideBySide();
    splitter.SetSplitterPosition(100);  // the rest is 95
    splitter.SetControlMinSize(2, 105);
    splitter.SetControlMaxSize(2, 80);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 100 - 10 + 15);
}

TEST_F(SplitterTest, SideBySideEachControlGetsTheWholeBoxWhenOneIsHidden) {
    BindSideBySide();
    splitter.SetVisible(2, false);
    EXPECT_FALSE(second.Visible());
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 200, 100}));
    EXPECT_EQ(PlaceOf(second), (Place{0, 0, 200, 100}));
    splitter.SetVisible(2, true);
    EXPECT_TRUE(second.Visible());
    EXPECT_EQ(PlaceOf(second), (Place{103, 0, 97, 100}));
}

TEST_F(SplitterTest, StackedOnlyTheFirstIsMovedWhenOneIsHidden) {
    splitter.Bind(first, second);
    splitter.SetVisible(2, false);
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 200, 100}));
    EXPECT_EQ(PlaceOf(second), (Place{0, 53, 200, 47}));
    splitter.SetVisible(2, true);
    splitter.SetVisible(1, false);
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 200, 100}));
    EXPECT_EQ(PlaceOf(second), (Place{0, 53, 200, 47}));
}

TEST_F(SplitterTest, APositionIsBroughtIntoTheBoxAlsoWhileAControlIsHidden) {
    BindSideBySide();
    splitter.SetVisible(1, false);
    splitter.SetSplitterPosition(500);
    splitter.Resize();
    EXPECT_EQ(splitter.SplitterPosition(), 199);
}

TEST_F(SplitterTest, AKeptRatioPutsTheControlIntoTheMiddleOfItsPlace) {
    BindSideBySide();
    splitter.SetMaintainAspectRatio(1, true);  // 2 : 1 in 98 x 100
    EXPECT_EQ(PlaceOf(first), (Place{0, 25.5, 98, 49}));
    splitter.SetMaintainAspectRatio(2, true);  // 1 : 2 in 97 x 100
    EXPECT_EQ(PlaceOf(second), (Place{103 + 23.5, 0, 50, 100}));
    splitter.SetVisible(1, false);
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 200, 100}));
    EXPECT_EQ(PlaceOf(second), (Place{75, 0, 50, 100}));
    splitter.SetMaintainAspectRatio(2, false);
    EXPECT_EQ(PlaceOf(second), (Place{0, 0, 200, 100}));
}

TEST_F(SplitterTest, ARatioIsTakenAtBindOnly) {
    splitter.SetMaintainAspectRatio(1, true);
    BindSideBySide();
    first.Move(0, 0, 15, 1500);
    splitter.Resize();
    EXPECT_EQ(PlaceOf(first), (Place{0, 25.5, 98, 49}));
}

TEST_F(SplitterTest, AControlWithoutHeightHasNoRatioThatCouldHarm) {
    first.Move(0, 0, 0, 0);
    second.Move(0, 0, 100, 0);
    splitter.SetMaintainAspectRatio(1, true);
    splitter.SetMaintainAspectRatio(2, true);
    BindSideBySide();
    for (const Control* control : {&first, &second}) {
        for (const double length : PlaceOf(*control)) {
            EXPECT_TRUE(length >= 0 && length <= 200) << length;
        }
    }
}

TEST_F(SplitterTest, NothingIsDoneBeforeItIsBound) {
    Splitter unbound(toolkit);
    unbound.SetVisible(1, false);
    EXPECT_TRUE(unbound.Visible(1));
    unbound.SetMaintainAspectRatio(1, true);
    EXPECT_TRUE(unbound.MaintainAspectRatio(1));
    unbound.SetSplitterPosition(-3);
    unbound.Bind(first, second);  // there is no container yet
    EXPECT_EQ(unbound.SplitterPosition(), -3);
    toolkit.log.clear();
    unbound.MouseDown(kLeft, kNoShift, 0, 0);
    unbound.MouseMove(kLeft, kNoShift, 0, 0);
    unbound.MouseUp(kLeft, kNoShift, 0, 0);
    EXPECT_TRUE(toolkit.log.empty());
    EXPECT_FALSE(toolkit.cursor);
    unbound.SetContainer(box);
    unbound.SetVisible(1, false);
    EXPECT_FALSE(unbound.Visible(1));
    EXPECT_EQ(unbound.SplitterPosition(), 0);
}

TEST_F(SplitterTest, APressConfinesTheMouseToTheBoxUntilTheRelease) {
    BindSideBySide();
    Press(98, 10);
    ASSERT_TRUE(toolkit.clip);
    EXPECT_EQ(toolkit.clip->width, 200);
    EXPECT_EQ(toolkit.clip->height, 100);
    splitter.MouseUp(kRight, kNoShift, 0, 0);  // any button ends it
    EXPECT_FALSE(toolkit.clip);
    const std::size_t told = toolkit.log.size();
    splitter.MouseUp(kLeft, kNoShift, 0, 0);
    EXPECT_EQ(toolkit.log.size(), told);
    MoveMouse(20, 10);
    EXPECT_EQ(splitter.SplitterPosition(), 98);
}

TEST_F(SplitterTest, APressBesideTheBarOrWithAnotherButtonStartsNoDrag) {
    BindSideBySide();
    Press(97.9, 50);
    Press(103, 50);
    Press(100, 50, kRight);
    EXPECT_FALSE(toolkit.clip);
    Press(102.9, 50, kLeft | kRight);
    EXPECT_TRUE(toolkit.clip);
}

TEST_F(SplitterTest, StackedTheBarLiesAcross) {
    splitter.Bind(first, second);
    Press(100, 47.9);
    Press(100, 53);
    EXPECT_FALSE(toolkit.clip);
    Press(100, 48);
    EXPECT_TRUE(toolkit.clip);
    MoveMouse(0, 20);
    EXPECT_EQ(splitter.SplitterPosition(), 20);
    EXPECT_EQ(PlaceOf(second), (Place{0, 25, 200, 75}));
}

TEST_F(SplitterTest, APressWhileAControlIsHiddenStartsNoDrag) {
    BindSideBySide();
    splitter.SetVisible(1, false);
    Press(100, 50);
    MoveMouse(100, 50);
    EXPECT_FALSE(toolkit.clip);
    EXPECT_FALSE(toolkit.cursor);
}

TEST_F(SplitterTest, TheSizingCursorIsShownOverTheBarAndDuringADrag) {
    BindSideBySide();
    MoveMouse(50, 50);
    EXPECT_FALSE(toolkit.cursor);
    MoveMouse(100, 50);
    EXPECT_EQ(toolkit.cursor, CursorShape::SizeWestEast);
    Press(100, 50);
    toolkit.cursor.reset();
    splitter.SetControlMaxSize(1, 98);
    MoveMouse(180, 50);
    EXPECT_EQ(toolkit.cursor, CursorShape::SizeWestEast);
    splitter.SetOrientation(Splitter::kStacked);
    splitter.Resize();
    splitter.MouseUp(kLeft, kNoShift, 0, 0);
    MoveMouse(0, splitter.SplitterPosition());
    EXPECT_EQ(toolkit.cursor, CursorShape::SizeNorthSouth);
}

TEST_F(SplitterTest, ADragMovesTheBarHalvesToTheEvenPixel) {
    BindSideBySide();
    Drag(-10.5);
    EXPECT_EQ(splitter.SplitterPosition(), 88);  // 87.5
    MoveMouse(100 - 11.5, 50);
    EXPECT_EQ(splitter.SplitterPosition(), 86);  // 86.5
    EXPECT_EQ(PlaceOf(first), (Place{0, 0, 86, 100}));
}

TEST_F(SplitterTest, ADragKeepsTheBoundsOfTheFirst) {
    BindSideBySide();
    splitter.SetControlMinSize(1, 40);
    splitter.SetControlMaxSize(1, 120);
    Drag(-90);
    EXPECT_EQ(splitter.SplitterPosition(), 40);
    MoveMouse(180, 50);
    EXPECT_EQ(splitter.SplitterPosition(), 120);
}

TEST_F(SplitterTest, ADragKeepsTheBoundsOfTheSecondOverTheFirsts) {
    BindSideBySide();
    splitter.SetControlMinSize(1, 190);
    splitter.SetControlMinSize(2, 50);
    Drag(70);
    EXPECT_EQ(splitter.SplitterPosition(), 145);
    EXPECT_EQ(second.Width(), 50 * kPixel);
    splitter.SetControlMinSize(1, -1);
    splitter.SetControlMaxSize(2, 60);
    MoveMouse(10, 50);
    EXPECT_EQ(splitter.SplitterPosition(), 135);
}

TEST_F(SplitterTest, ADragToBoundsThatCannotBeMetEndsAtZero) {
    BindSideBySide();
    splitter.SetControlMinSize(1, 150);
    splitter.SetControlMinSize(2, 400);
    Drag(20);
    EXPECT_EQ(splitter.SplitterPosition(), 0);
    EXPECT_EQ(PlaceOf(second), (Place{5, 0, 195, 100}));
}

TEST_F(SplitterTest, ADragBeyondTheBoxEndsAtItsEdges) {
    BindSideBySide();
    Drag(-300);
    EXPECT_EQ(splitter.SplitterPosition(), 0);
    MoveMouse(1e12, 50);
    EXPECT_EQ(splitter.SplitterPosition(), 199);
}

// --- Where a pixel has not as many twips down as across: 15 across, 10 down.

class UnevenSplitterTest : public SplitterTest {
  protected:
    UnevenSplitterTest() { toolkit.pixelsPerInchY = 144; }
    static Place TwipsOf(const Control& control) {
        return {control.Left(), control.Top(), control.Width(), control.Height()};
    }
};

TEST_F(UnevenSplitterTest, SideBySideItMeasuresAcross) {
    BindSideBySide();
    EXPECT_EQ(splitter.SplitterPosition(), 98);
    EXPECT_EQ(TwipsOf(first), (Place{0, 0, 98 * 15, 1500}));
    EXPECT_EQ(TwipsOf(second), (Place{103 * 15, 0, 3000 - 103 * 15, 1500}));
    splitter.MouseDown(kLeft, kNoShift, 100 * 15, 50 * 10);
    splitter.MouseMove(kLeft, kNoShift, 60 * 15, 90 * 10);
    EXPECT_EQ(splitter.SplitterPosition(), 58);
    EXPECT_EQ(TwipsOf(first), (Place{0, 0, 58 * 15, 1500}));
}

TEST_F(UnevenSplitterTest, StackedItMeasuresDown) {
    splitter.Bind(first, second);
    EXPECT_EQ(splitter.SplitterPosition(), 72) << "the box is 150 pixels high";
    EXPECT_EQ(TwipsOf(first), (Place{0, 0, 3000, 720}));
    EXPECT_EQ(TwipsOf(second), (Place{0, 770, 3000, 730}));
    splitter.MouseDown(kLeft, kNoShift, 10 * 15, 719);
    EXPECT_FALSE(toolkit.clip) << "above the bar";
    splitter.MouseDown(kLeft, kNoShift, 10 * 15, 769);
    EXPECT_TRUE(toolkit.clip);
    splitter.MouseMove(kLeft, kNoShift, 90 * 15, 769 - 20 * 10);
    EXPECT_EQ(splitter.SplitterPosition(), 52);
    EXPECT_EQ(TwipsOf(first), (Place{0, 0, 3000, 520}));
}

TEST_F(UnevenSplitterTest, ARatioIsThatOfTheScale) {
    BindSideBySide();
    splitter.SetMaintainAspectRatio(2, true);
    const double width = 3000 - 103 * 15;
    EXPECT_EQ(second.Height(), 1500);
    EXPECT_EQ(second.Width(), 750) << "half its height in twips, as it was bound";
    EXPECT_EQ(second.Left(), 103 * 15 + (width - 750) / 2);
}

}  // namespace
}  // namespace ostrevin
