// A folder of the host that lives as long as a test, and whose files ordinary users may read.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace ostrevin {

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    /// The same in UTF-8.
    [[nodiscard]] std::string Utf8Path() const;
    /// The host's path of something below the folder, in UTF-8.
    [[nodiscard]] std::string operator/(const std::string& name) const;

    // Each makes the folders above as well.
    void Write(const std::string& name, std::string_view text) const;
    void Write(const std::string& name, std::span<const std::byte> bytes) const;
    void MakeFolder(const std::string& name) const;

    // What only the tests of a host with links, pipes and rights of POSIX use.
    void MakeLink(const std::string& name, const std::string& target) const;
    void MakeFifo(const std::string& name) const;
    /// Takes every right to a file or folder away.
    void Shut(const std::string& name) const;

  private:
    std::filesystem::path path_;
};

/// The bytes of a file of the host, by its UTF-8 path; empty when there is none.
[[nodiscard]] std::string BytesOfFile(const std::string& file);

/// While it lives, files without rights cannot be read, not even by a test run of the superuser (on a host
/// with those of POSIX).
class OrdinaryUser {
  public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    bool changed_ = false;
};

}  // namespace ostrevin
