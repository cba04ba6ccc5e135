#include "toolkit/qt/QtToolTip.h"

#include <QScreen>
#include <QStringList>
#include <QTextLayout>
#include <QTextOption>
#include <QToolTip>

namespace ostrevin::qt {

QString ToolTipOf(const QString& text, const QWidget& widget) {
    constexpr double kPartOfScreen = 0.6;
    QTextLayout layout(text, QToolTip::font());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(kPartOfScreen * widget.screen()->availableGeometry().width());
        lines += text.mid(line.textStart(), line.textLength()).toHtmlEscaped();
    }
    layout.endLayout();
    return QStringLiteral("<p style=\"white-space:pre\">") + lines.join(QStringLiteral("<br>")) +
           QStringLiteral("</p>");
}

}  // namespace ostrevin::qt
