// What the tests of forms that Qt shows share: the way to a form's window and to what stands on it.
#pragma once

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include <QMainWindow>

#include "controls/Form.h"
#include "toolkit/qt/QtFormView.h"

namespace ostrevin {

class QtFormTest : public ::testing::Test {
  protected:
    /// The form may be made later, and has to be loaded before it is looked at.
    explicit QtFormTest(Form& form) : shown_(form) {}

    [[nodiscard]] QMainWindow& Window() const {
        return *static_cast<qt::QtFormView*>(shown_.View())->Window();
    }
    template <typename Widget>
    [[nodiscard]] Widget& Find(const char* name) const {
        auto* found = Window().findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no widget ") + name);
        }
        return *found;
    }

  private:
    Form& shown_;
};

}  // namespace ostrevin
