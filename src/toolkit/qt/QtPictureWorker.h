// The process that decodes one picture. The libraries that do it are not ours and the bytes may be hostile,
// so that they run apart from the program: without its memory, with little time and no leave to write.
//
// The program starts itself with kDecodePicture, a width and a height. The worker reads the file from its
// standard input. It writes the width and height of the picture (32 bits each) and its points (32 bits each,
// 0xAARRGGBB, row by row from the top left), in the byte order of the host, and ends with 0; where there is
// no picture it ends in any other way.
#pragma once

#include <optional>

#include <QByteArray>

namespace ostrevin::qt {

inline constexpr char kDecodePicture[] = "--decode-picture";

/// Whether a format, by the name that Qt has for it ("png"), is plain points: nothing that could refer to
/// other files or hold programs.
[[nodiscard]] bool IsPictureFormat(const QByteArray& format);

/// Does the worker's work where the arguments of the program ask for it: its exit code; none for any others.
[[nodiscard]] std::optional<int> RunPictureWorker(int count, char** arguments);

}  // namespace ostrevin::qt
