#include "toolkit/qt/QtPictureReader.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include <QDeadlineTimer>
#include <QImageReader>
#include <QProcess>

#include "toolkit/qt/QtPictureWorker.h"

namespace ostrevin::qt {
namespace {

using Header = std::array<std::int32_t, 2>;  // width and height

/// What the worker wrote; none when it is no picture that fits the box.
std::optional<Picture> PictureIn(const QByteArray& output, int width, int height) {
    Header header{};
    if (output.size() < static_cast<qsizetype>(sizeof header)) {
        return std::nullopt;
    }
    std::memcpy(header.data(), output.data(), sizeof header);
    Picture picture{header[0], header[1], {}};
    if (picture.width <= 0 || picture.width > width || picture.height <= 0 || picture.height > height) {
        return std::nullopt;
    }
    const std::size_t points =
        static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    if (static_cast<std::size_t>(output.size()) != sizeof header + points * sizeof(std::uint32_t)) {
        return std::nullopt;
    }
    picture.pixels.resize(points);
    std::memcpy(picture.pixels.data(), output.data() + sizeof header, points * sizeof(std::uint32_t));
    return picture;
}

/// Waits for a process to end, in time and with no more than the most bytes written.
bool Finishes(QProcess& process, qint64 most, const QDeadlineTimer& deadline) {
    const auto remaining = [&] { return static_cast<int>(deadline.remainingTime()); };
    while (process.bytesAvailable() <= most && process.waitForReadyRead(remaining())) {
    }
    return process.bytesAvailable() <= most &&
           (process.state() == QProcess::NotRunning || process.waitForFinished(remaining()));
}

}  // namespace

QtPictureReader::QtPictureReader(std::string program, std::chrono::milliseconds patience)
    : program_(std::move(program)), patience_(patience) {}

bool QtPictureReader::Reads(const std::string& extension) {
    QByteArray format = QByteArray::fromStdString(extension).toLower();
    if (format == "dib") {
        format = "bmp";
    } else if (format == "jfif" || format == "jpe") {
        format = "jpeg";
    }
    return IsPictureFormat(format) && QImageReader::supportedImageFormats().contains(format);
}

std::optional<Picture> QtPictureReader::Read(std::span<const std::byte> file, int width, int height) const {
    QProcess worker;
    worker.setProgram(QString::fromStdString(program_));
    worker.setArguments(
        {QString::fromLatin1(kDecodePicture), QString::number(width), QString::number(height)});
    worker.setStandardErrorFile(QProcess::nullDevice());
    const QDeadlineTimer deadline(patience_);
    worker.start();
    if (!worker.waitForStarted(static_cast<int>(patience_.count()))) {
        return std::nullopt;
    }
    worker.write(reinterpret_cast<const char*>(file.data()), static_cast<qint64>(file.size()));
    worker.closeWriteChannel();
    const qint64 most = static_cast<qint64>(sizeof(Header)) + qint64{4} * width * height;
    if (!Finishes(worker, most, deadline)) {
        worker.kill();
        worker.waitForFinished();
        return std::nullopt;
    }
    if (worker.exitStatus() != QProcess::NormalExit || worker.exitCode() != 0) {
        return std::nullopt;
    }
    return PictureIn(worker.readAllStandardOutput(), width, height);
}

}  // namespace ostrevin::qt
