// An output file that takes lines, each ended by CR LF. What it holds in memory does not grow with the file.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Platform.h"

namespace ostrevin {

class LineFile {
  public:
    /// Turns text into the bytes of the file.
    using Encode = std::function<std::string(std::string_view)>;

    /// Creates the file, or empties it if it may be replaced. This and all below raise RuntimeError when it
    /// cannot be written.
    LineFile(Platform& platform, const std::string& path, Encode encode,
             Existing existing = Existing::Replace);

    /// Writes one line, put together from its parts.
    void Write(std::initializer_list<std::string_view> parts);
    void Write(std::string_view line) { Write({line}); }
    void Close();

  private:
    void Flush();

    std::unique_ptr<OutputFile> file_;
    Encode encode_;
    std::string waiting_;  // whole lines that are not in the file yet
};

}  // namespace ostrevin
