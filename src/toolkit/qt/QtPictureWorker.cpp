#include "toolkit/qt/QtPictureWorker.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <sched.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QImageReader>

namespace ostrevin::qt {
namespace {

constexpr int kDone = 0;
constexpr int kNoPicture = 1;
constexpr int kUsage = 2;

constexpr qint64 kMostPoints = 100'000'000;  // of a picture as it is stored
constexpr int kMostMegabytes = 512;          // of one picture in memory
constexpr rlim_t kMostMemory = rlim_t{1} << 30U;
constexpr rlim_t kMostSeconds = 8;
constexpr rlim_t kMostFiles = 64;  // the libraries and their settings

// Each is known by its first bytes, whatever the name of the file says.
constexpr auto kFormats =
    std::to_array<std::string_view>({"bmp", "cur", "gif", "ico", "jpeg", "jpg", "pbm", "pgm", "png", "ppm",
                                     "tif", "tiff", "webp", "xbm", "xpm"});

void Limit(__rlimit_resource resource, rlim_t most) {
    const rlimit limit{most, most};
    setrlimit(resource, &limit);
}

/// Gives up what decoding does not need. Where the system refuses a part of it, the rest still holds.
void GiveUpRights() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    Limit(RLIMIT_CORE, 0);
    Limit(RLIMIT_FSIZE, 0);
    Limit(RLIMIT_NOFILE, kMostFiles);
    Limit(RLIMIT_AS, kMostMemory);
    Limit(RLIMIT_CPU, kMostSeconds);
    // Scaling takes a thread for each processor, and the memory of a stack for each thread.
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(static_cast<std::size_t>(std::max(sched_getcpu(), 0)), &one);
    sched_setaffinity(0, sizeof one, &one);
}

/// The largest size within the box of a picture that keeps its ratio and does not grow.
QSize Fitting(const QSize& size, const QSize& box) {
    return size.boundedTo(box) == size ? size : size.scaled(box, Qt::KeepAspectRatio).expandedTo({1, 1});
}

QImage Decode(QByteArray file, QSize box) {
    QBuffer buffer(&file);
    QImageReader reader(&buffer);
    if (!IsPictureFormat(reader.format())) {
        return {};
    }
    const QSize stored = reader.size();
    if (stored.isEmpty() || qint64{stored.width()} * stored.height() > kMostPoints) {
        return {};
    }
    reader.setAutoTransform(true);
    if (reader.transformation().testFlag(QImageIOHandler::TransformationRotate90)) {
        box.transpose();  // the picture is turned after it was scaled
    }
    reader.setScaledSize(Fitting(stored, box));
    return reader.read().convertToFormat(QImage::Format_ARGB32);
}

void Write(QFile& output, const QImage& picture) {
    const std::array<std::int32_t, 2> size = {picture.width(), picture.height()};
    output.write(reinterpret_cast<const char*>(size.data()), sizeof size);
    for (int y = 0; y < picture.height(); ++y) {
        output.write(reinterpret_cast<const char*>(picture.constScanLine(y)), qint64{4} * picture.width());
    }
}

}  // namespace

bool IsPictureFormat(const QByteArray& format) {
    return std::find(kFormats.begin(), kFormats.end(),
                     std::string_view(format.data(), static_cast<std::size_t>(format.size()))) !=
           kFormats.end();
}

std::optional<int> RunPictureWorker(int count, char** arguments) {
    if (count < 2 || std::string_view(arguments[1]) != kDecodePicture) {
        return std::nullopt;
    }
    const QSize box =
        count == 4 ? QSize(QByteArray(arguments[2]).toInt(), QByteArray(arguments[3]).toInt()) : QSize();
    if (box.isEmpty()) {
        return kUsage;
    }
    GiveUpRights();
    const QCoreApplication application(count, arguments);
    QImageReader::setAllocationLimit(kMostMegabytes);
    QFile input;
    QFile output;
    if (!input.open(stdin, QIODevice::ReadOnly) || !output.open(stdout, QIODevice::WriteOnly)) {
        return kNoPicture;
    }
    const QImage picture = Decode(input.readAll(), box);
    if (picture.isNull()) {
        return kNoPicture;
    }
    Write(output, picture);
    return output.flush() ? kDone : kNoPicture;
}

}  // namespace ostrevin::qt
