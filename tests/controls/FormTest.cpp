#include <gtest/gtest.h>

#include "controls/Boxes.h"
#include "controls/Form.h"
#include "controls/StatusBar.h"
#include "controls/ToolBar.h"
#include "tests/support/TestToolkit.h"

namespace ostrevin {
namespace {

using testing::TestToolkit;

class SampleForm : public Form {
  public:
    explicit SampleForm(Toolkit& toolkit) : Form(toolkit, "frmSample") { Move(0, 0, 6000, 3000); }
    ~SampleForm() override { DropView(); }

    std::vector<std::string> events;
    bool unloadFails = false;

  protected:
    void Form_Load() override { events.emplace_back("load"); }
    void Form_Resize() override { events.emplace_back("resize"); }
    void Form_Unload() override {
        events.emplace_back("unload");
        if (unloadFails) {
            throw ControlError("cannot");
        }
    }
};

using Strings = std::vector<std::string>;

TEST(Form, HasAScaleAcrossAndAnotherOneDown) {
    TestToolkit toolkit;
    toolkit.pixelsPerInch = 120;
    toolkit.pixelsPerInchY = 144;
    SampleForm form(toolkit);
    Frame frame(&form, "frame");
    frame.Move(1440, 720, 2880, 1440);
    EXPECT_EQ(form.ScaleX(1440, ScaleMode::Twip, ScaleMode::Pixel), 120);
    EXPECT_EQ(form.ScaleY(1440, ScaleMode::Twip, ScaleMode::Pixel), 144);
    const PixelRect place = frame.PlaceInPixels();
    EXPECT_EQ(place.left, 120);
    EXPECT_EQ(place.top, 72);
    EXPECT_EQ(place.width, 240);
    EXPECT_EQ(place.height, 144);
    form.Show();
    form.Resized(600, 360, WindowState::Normal);
    EXPECT_EQ(form.Width(), 7200);
    EXPECT_EQ(form.Height(), 3600);
}

TEST(Form, LoadsOnceAndBeforeItIsShown) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    form.Show();
    form.Show();
    EXPECT_EQ(form.events, (Strings{"load", "resize"}));
    EXPECT_EQ(toolkit.log, (Strings{"load frmSample", "show frmSample", "show frmSample"}));
}

TEST(Form, ModalFormReturnsWhenItIsHiddenAndKeepsItsStateUntilUnloaded) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    toolkit.onModal = [](Form& shown) { shown.Hide(); };
    form.Show(ShowStyle::Modal);
    EXPECT_TRUE(form.Loaded());
    form.Unload();
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(toolkit.log,
              (Strings{"load frmSample", "modal frmSample", "hide frmSample", "unload frmSample"}));
}

TEST(Form, CanUnloadItselfFromAnEventOfItsOwn) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    toolkit.onModal = [](Form& shown) { shown.Unload(); };
    form.Show(ShowStyle::Modal);
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(form.events, (Strings{"load", "resize", "unload"}));
}

TEST(Form, WindowGoesAlsoWhenUnloadFails) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    form.Show();
    form.unloadFails = true;
    EXPECT_THROW(form.Unload(), ControlError);
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(toolkit.log.back(), "unload frmSample");
}

TEST(Form, DestroyedWhileLoadedItTakesItsWindowAlongWithoutUnloadEvent) {
    TestToolkit toolkit;
    {
        SampleForm form(toolkit);
        form.Show();
        form.unloadFails = true;
    }
    EXPECT_EQ(toolkit.log.back(), "unload frmSample");
}

TEST(Form, TakesItsInnerSizeFromTheView) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    form.Show();
    form.Resized(800, 600, WindowState::Normal);
    EXPECT_EQ(form.ScaleWidth(), 12000);
    EXPECT_EQ(form.ScaleHeight(), 9000);
    form.Resized(0, 0, WindowState::Minimized);
    EXPECT_EQ(form.ScaleWidth(), 12000) << "a minimised window keeps its sizes";
    EXPECT_EQ(form.WindowState(), WindowState::Minimized);
    EXPECT_EQ(form.events, (Strings{"load", "resize", "resize", "resize"}));
}

TEST(Form, PlacesAlignedControlsByTheirHeights) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    ToolBar top(&form, "top");
    top.SetAlignment(Align::Top);
    top.SetHeight(300);
    StatusBar bottom(&form, "bottom");
    bottom.SetAlignment(Align::Bottom);
    bottom.SetHeight(450);
    form.Load();
    EXPECT_EQ(top.Top(), 0);
    EXPECT_EQ(top.Width(), 6000);
    EXPECT_EQ(bottom.Top(), 2550);
    form.Resized(200, 100, WindowState::Normal);
    EXPECT_EQ(bottom.Top(), 1050);
    EXPECT_EQ(bottom.Width(), 3000);
    form.Unload();
}

TEST(Form, ShowsMessageBoxesThroughTheToolkit) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    form.MsgBox("text", "caption");
    ASSERT_EQ(toolkit.boxes.size(), 1U);
    EXPECT_EQ(toolkit.boxes[0].text, "text");
    EXPECT_EQ(toolkit.boxes[0].caption, "caption");
}

TEST(Scale, ConvertsBetweenTwipsPointsAndPixels) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    EXPECT_EQ(form.ScaleX(10, ScaleMode::Pixel, ScaleMode::Twip), 150);
    EXPECT_EQ(form.ScaleY(72, ScaleMode::Point, ScaleMode::Pixel), 96);
    EXPECT_EQ(form.ScaleX(7, ScaleMode::Pixel, ScaleMode::Pixel), 7);
    toolkit.pixelsPerInch = 144;
    EXPECT_EQ(form.ScaleX(10, ScaleMode::Pixel, ScaleMode::Twip), 100);
}

TEST(Scale, NeighboursStayNeighboursInPixels) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    Frame first(&form, "first");
    Frame second(&form, "second");
    // There are 15 twips to a pixel: the edges stand at 0.6, 1.2 and 1.8 pixels.
    first.Move(9, 9, 9, 9);
    second.Move(18, 9, 9, 9);
    EXPECT_EQ(first.PlaceInPixels().left, 1);
    EXPECT_EQ(first.PlaceInPixels().width, 0);
    EXPECT_EQ(second.PlaceInPixels().left, 1);
    EXPECT_EQ(second.PlaceInPixels().width, 1);
    EXPECT_EQ(second.PlaceInPixels().top, 1);
    EXPECT_EQ(second.PlaceInPixels().height, 0);
}

TEST(Scale, InnerSizeOfABoxIsInItsOwnScale) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    PictureBox box(&form, "box");
    box.SetScaleMode(ScaleMode::Pixel);
    box.Move(0, 0, 1500, 750);
    EXPECT_EQ(box.ScaleWidth(), 100);
    EXPECT_EQ(box.ScaleHeight(), 50);
    EXPECT_EQ(box.Parent(), &form);
}

TEST(Controls, StandOnTheirContainerInTabOrderUntilTheyGo) {
    TestToolkit toolkit;
    SampleForm form(toolkit);
    PictureBox box(&form, "box");
    {
        Frame frame(&form, "frame");
        EXPECT_EQ(form.Controls(), (std::vector<Control*>{&box, &frame}));
    }
    EXPECT_EQ(form.Controls(), (std::vector<Control*>{&box}));
}

}  // namespace
}  // namespace ostrevin
