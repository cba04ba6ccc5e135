#include "toolkit/qt/QtPictures.h"

#include <QFile>

#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

QIcon Icon(const std::string& name) {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        const QString file = QStringLiteral(":/pictures/%1-%2.png").arg(Text(name)).arg(size);
        if (QFile::exists(file)) {
            icon.addFile(file);
        }
    }
    return icon;
}

QIcon IconOf(const ImageList* images, const std::string& key) {
    return images == nullptr ? QIcon() : Icon(images->PictureOf(key));
}

QPixmap Picture(const std::string& name, double devicePixelRatio) {
    const bool fine = devicePixelRatio > 1;
    QPixmap picture(
        QStringLiteral(":/pictures/%1%2.png").arg(Text(name), fine ? QStringLiteral("@2x") : QString()));
    return picture;
}

}  // namespace ostrevin::qt
