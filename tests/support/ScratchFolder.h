// A folder of the computer that runs the tests, gone at the end of its scope.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace ostrevin {

class ScratchFolder {
  public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// The UTF-8 path of something in the folder; of the folder itself, with a separator behind it, for "".
    [[nodiscard]] std::string Path(std::string_view name = {}) const;
    void Write(std::string_view name, std::string_view bytes) const;
    /// The bytes of a file; raises std::runtime_error when there is none.
    [[nodiscard]] std::string Read(std::string_view name) const;
    void MakeFolder(std::string_view name) const;
    [[nodiscard]] bool Has(std::string_view name) const;
    /// How many entries the folder has.
    [[nodiscard]] std::size_t Count() const;

  private:
    [[nodiscard]] std::filesystem::path Full(std::string_view name) const;
    std::filesystem::path path_;
};

}  // namespace ostrevin
