// The dialogs that ask for a text to filter by and a text to find.
#include <gtest/gtest.h>
#include <string>

#include "tests/support/TestToolkit.h"
#include "ui/frmFilter.h"
#include "ui/frmFind.h"

namespace ostrevin {
namespace {

/// What the two dialogs have in common, under one set of names.
struct Parts {
    Form& form;
    Label& label;
    TextBox& text;
    CommandButton& button;
};

Parts PartsOf(frmFilter& form) {
    return {form, form.Label1, form.txtFilterString, form.cmdFilter};
}

Parts PartsOf(frmFind& form) {
    return {form, form.Label1, form.txtFind, form.cmdFind};
}

template <typename Dialog>
class FilterFindFormsTest : public ::testing::Test {
  protected:
    testing::TestToolkit toolkit;
    Dialog dialog{toolkit};
    Parts parts = PartsOf(dialog);
};

using Dialogs = ::testing::Types<frmFilter, frmFind>;
TYPED_TEST_SUITE(FilterFindFormsTest, Dialogs);

TEST(FilterFormTest, HasItsTexts) {
    testing::TestToolkit toolkit;
    const frmFilter form(toolkit);
    EXPECT_EQ(form.Name(), "frmFilter");
    EXPECT_EQ(form.Caption(), "Filter");
    EXPECT_EQ(form.Label1.Caption(), "Enter text to filter");
    EXPECT_EQ(form.txtFilterString.Name(), "txtFilterString");
    EXPECT_EQ(form.txtFilterString.AccessibleName(), "Enter text to filter");
    EXPECT_EQ(form.cmdFilter.Name(), "cmdFilter");
    EXPECT_EQ(form.cmdFilter.Caption(), "Filter");
}

TEST(FindFormTest, HasItsTexts) {
    testing::TestToolkit toolkit;
    const frmFind form(toolkit);
    EXPECT_EQ(form.Name(), "frmFind");
    EXPECT_EQ(form.Caption(), "Find");
    EXPECT_EQ(form.Label1.Caption(), "Find What");
    EXPECT_EQ(form.txtFind.Name(), "txtFind");
    EXPECT_EQ(form.txtFind.AccessibleName(), "Find What");
    EXPECT_EQ(form.cmdFind.Name(), "cmdFind");
    EXPECT_EQ(form.cmdFind.Caption(), "Find");
}

TYPED_TEST(FilterFindFormsTest, IsADialogOfFixedSizeWhoseButtonEnterPresses) {
    EXPECT_EQ(this->parts.form.BorderStyle(), BorderStyle::FixedDialog);
    EXPECT_EQ(this->parts.form.DefaultButton(), &this->parts.button);
    EXPECT_EQ(this->parts.form.CancelButton(), nullptr);
}

TYPED_TEST(FilterFindFormsTest, TheButtonHidesItAndLeavesTheText) {
    Parts& own = this->parts;
    this->toolkit.onModal = [&](Form& /*form*/) {
        own.text.Type("typed");
        own.button.Press();
    };
    own.form.Show(ShowStyle::Modal);
    EXPECT_EQ(this->toolkit.log.back(), "hide " + own.form.Name());
    EXPECT_TRUE(own.form.Loaded());
    EXPECT_EQ(own.text.Text(), "typed");
}

TYPED_TEST(FilterFindFormsTest, EachUseStartsWithAnEmptyBox) {
    Parts& own = this->parts;
    own.form.Load();
    own.text.Type("typed");
    own.form.Hide();
    own.form.Unload();
    own.form.Load();
    EXPECT_EQ(own.text.Text(), "");
}

TYPED_TEST(FilterFindFormsTest, EscapeAndTheCloseBoxLeaveNoText) {
    Parts& own = this->parts;
    for (void (Form::*leave)() : {&Form::Escape, &Form::Close}) {
        this->toolkit.onModal = [&](Form& form) {
            own.text.Type("typed");
            (form.*leave)();
        };
        own.form.Show(ShowStyle::Modal);
        EXPECT_FALSE(own.form.Loaded());
        EXPECT_EQ(own.text.Text(), "");
    }
}

TYPED_TEST(FilterFindFormsTest, ItsControlsStandOnItApartFromEachOther) {
    const Parts& own = this->parts;
    double bottom = 0;
    for (const Control* control :
         {static_cast<const Control*>(&own.label), static_cast<const Control*>(&own.text),
          static_cast<const Control*>(&own.button)}) {
        EXPECT_GT(control->Top(), bottom) << control->Name();
        EXPECT_GT(control->Left(), 0) << control->Name();
        EXPECT_LT(control->Left() + control->Width(), own.form.Width()) << control->Name();
        bottom = control->Top() + control->Height();
    }
    EXPECT_LT(bottom, own.form.Height());
}

}  // namespace
}  // namespace ostrevin
