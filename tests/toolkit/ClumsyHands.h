// What a person may do to a tree or a list with mouse and keyboard, by chance.
#pragma once

#include <array>
#include <random>

#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QTreeView>
#include <QWheelEvent>

namespace ostrevin::testing {

/// Sends an event of the mouse, whose place may lie outside of the view, as while a button is held.
inline void SendMouse(const QAbstractScrollArea& view, QEvent::Type type, const QPoint& place,
                      Qt::MouseButton button, Qt::MouseButtons buttons,
                      Qt::KeyboardModifiers modifiers = {}) {
    QMouseEvent event(type, place, view.viewport()->mapToGlobal(place), button, buttons, modifiers);
    QApplication::sendEvent(view.viewport(), &event);
}

/// Inputs that are the same in each run, whatever they may be good for.
class ClumsyHands {
  public:
    explicit ClumsyHands(unsigned seed) : random_(seed) {}

    [[nodiscard]] int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    template <typename Choices>
    [[nodiscard]] const auto& OneOf(const Choices& choices) {
        return choices[random_() % std::size(choices)];
    }

    /// Presses, moves, lets go, clicks twice or turns the wheel, or presses a key.
    void ActOn(QTreeView& view) {
        static constexpr std::array kModifiers = {Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier,
                                                  Qt::ShiftModifier, Qt::AltModifier};
        const Qt::KeyboardModifiers modifiers = OneOf(kModifiers);
        switch (Below(8)) {
            case 0:
                view.setFocus(Qt::TabFocusReason);
                break;
            case 1:
            case 2:
                PressKey(view, modifiers);
                break;
            case 3:
                ActOnHeader(*view.header(), modifiers);
                break;
            default:
                UseMouse(view, modifiers);
        }
    }

  private:
    void PressKey(QTreeView& view, Qt::KeyboardModifiers modifiers) {
        static constexpr std::array kKeys = {
            Qt::Key_Down,   Qt::Key_Down,  Qt::Key_Up,       Qt::Key_Up,     Qt::Key_PageDown,
            Qt::Key_PageUp, Qt::Key_Home,  Qt::Key_End,      Qt::Key_Left,   Qt::Key_Right,
            Qt::Key_Space,  Qt::Key_A,     Qt::Key_B,        Qt::Key_R,      Qt::Key_T,
            Qt::Key_Plus,   Qt::Key_Minus, Qt::Key_Asterisk, Qt::Key_F2,     Qt::Key_Select,
            Qt::Key_Return, Qt::Key_Tab,   Qt::Key_Backtab,  Qt::Key_Delete, Qt::Key_Menu};
        QTest::keyClick(&view, OneOf(kKeys), modifiers);
    }
    void UseMouse(const QTreeView& view, Qt::KeyboardModifiers modifiers) {
        static constexpr std::array kButtons = {Qt::LeftButton, Qt::LeftButton, Qt::LeftButton,
                                                Qt::RightButton, Qt::MiddleButton};
        constexpr int kBeyond = 40;
        const Qt::MouseButton button = OneOf(kButtons);
        const QPoint place(Below(view.viewport()->width() + 2 * kBeyond) - kBeyond,
                           Below(view.viewport()->height() + 2 * kBeyond) - kBeyond);
        switch (Below(8)) {
            case 0:
            case 1:
            case 2:
                held_ |= button;
                SendMouse(view, QEvent::MouseButtonPress, place, button, held_, modifiers);
                break;
            case 3:
            case 4:
                SendMouse(view, QEvent::MouseMove, place, Qt::NoButton, held_, modifiers);
                break;
            case 5:
                held_ &= ~Qt::MouseButtons(button);
                SendMouse(view, QEvent::MouseButtonRelease, place, button, held_, modifiers);
                break;
            case 6:
                SendMouse(view, QEvent::MouseButtonDblClick, place, button, held_, modifiers);
                break;
            default: {
                QWheelEvent wheel(place, view.viewport()->mapToGlobal(place), {},
                                  {0, Below(2) == 0 ? 120 : -120}, held_, modifiers, Qt::NoScrollPhase,
                                  false);
                QApplication::sendEvent(view.viewport(), &wheel);
            }
        }
    }
    /// Clicks a header, or drags it or the line beside it.
    void ActOnHeader(const QHeaderView& header, Qt::KeyboardModifiers modifiers) {
        if (header.isVisible()) {
            QWidget* viewport = header.viewport();
            const QPoint from(Below(viewport->width()), viewport->height() / 2);
            QTest::mousePress(viewport, Qt::LeftButton, modifiers, from);
            QTest::mouseMove(viewport, QPoint(Below(viewport->width()), viewport->height() / 2));
            QTest::mouseRelease(viewport, Qt::LeftButton, modifiers, from);
        }
    }

    std::mt19937 random_;
    Qt::MouseButtons held_;
};

}  // namespace ostrevin::testing
