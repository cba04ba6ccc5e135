// Files of a volume that are read now and then for a long time, few of them open at once: a system lets a
// program have some hundreds or thousands of open files, and a volume can have more accounts.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>

#include "platform/Platform.h"

namespace ostrevin {

class VolumeFiles;

class FewOpenFiles {
  public:
    explicit FewOpenFiles(const VolumeFiles& files) : files_(files) {}
    FewOpenFiles(const FewOpenFiles&) = delete;
    FewOpenFiles& operator=(const FewOpenFiles&) = delete;

    /// Opens a file as VolumeFiles does. It is closed when others are read from, and opened anew when it is
    /// read from again; when that fails, or it has another size by then, it cannot be read any more.
    [[nodiscard]] std::unique_ptr<InputFile> Open(const std::string& path, std::int32_t& result);

  private:
    class File;
    /// Says that a file is open now; another one may be closed.
    void NoteOpen(File& file);

    const VolumeFiles& files_;
    std::list<File*> open_;  // the one that was opened last stands last
};

}  // namespace ostrevin
