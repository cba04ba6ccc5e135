// Tool tips.
#pragma once

#include <QString>
#include <QWidget>

namespace ostrevin::qt {

/// What to give to a tool tip, which takes a text for markup if it looks like it, so that it shows this text
/// as it is; on as many lines as the screen of a widget asks for.
[[nodiscard]] QString ToolTipOf(const QString& text, const QWidget& widget);

}  // namespace ostrevin::qt
