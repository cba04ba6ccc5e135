// A failure that the runtime or a module raises, with its number.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace ostrevin {

class RuntimeError : public std::runtime_error {
  public:
    RuntimeError(std::uint32_t number, const std::string& message)
        : std::runtime_error(message), number_(number) {}
    [[nodiscard]] std::uint32_t Number() const { return number_; }

    static constexpr std::uint32_t kInvalidProcedureCall = 5;
    static constexpr std::uint32_t kOverflow = 6;
    static constexpr std::uint32_t kFileAlreadyExists = 58;
    static constexpr std::uint32_t kPathFileAccess = 75;

  private:
    std::uint32_t number_;
};

/// The failure of a file that cannot be written.
[[nodiscard]] inline RuntimeError PathFileAccessError(const std::string& path) {
    return {RuntimeError::kPathFileAccess, "Path/File access error: " + path};
}

/// The failure of a file whose place is taken by one that is not to be replaced.
[[nodiscard]] inline RuntimeError FileAlreadyExistsError(const std::string& path) {
    return {RuntimeError::kFileAlreadyExists, "File already exists: " + path};
}

}  // namespace ostrevin
