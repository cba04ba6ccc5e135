// The process that decodes one picture. The code that does it is not ours and the bytes may be hostile, so
// that it runs apart from the program, with little time and memory.
//
// The program starts itself with kDecodePicture, a width and a height. The worker reads the file from its
// standard input. It writes the width and height of the picture (32 bits each) and its points (32 bits each,
// 0xAARRGGBB, row by row from the top left), in the byte order of the host, and ends with 0; where there is
// no picture it ends in any other way.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ostrevin {

inline constexpr char kDecodePicture[] = "--decode-picture";

/// Does the worker's work where the arguments of the program (without its name) ask for it: its exit code;
/// none for any others.
[[nodiscard]] std::optional<int> RunPictureWorker(const std::vector<std::string>& arguments);

}  // namespace ostrevin
