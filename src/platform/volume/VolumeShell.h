// The shell's namespace over the files of a volume: folders by their paths, and thumbnails of pictures.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/ShellFolder.h"
#include "platform/volume/PictureDecoder.h"

namespace ostrevin {

class VolumeFiles;

/// Must outlive what it gives.
class VolumeShell {
  public:
    VolumeShell(const VolumeFiles& files, PictureDecoder decoder);

    [[nodiscard]] std::unique_ptr<ShellFolder> DesktopFolder();
    [[nodiscard]] std::unique_ptr<ShellMalloc> Malloc();

    // For the folders and extractors.

    [[nodiscard]] const VolumeFiles& Files() const { return files_; }
    [[nodiscard]] const PictureDecoder& Decoder() const { return decoder_; }
    /// A list for a path; none (0) when nothing stands there.
    [[nodiscard]] ItemList Allocate(const std::string& path);
    void Free(ItemList list) { paths_.erase(list); }
    /// The path of an item; empty for a list that is not allocated.
    [[nodiscard]] std::string PathOf(ItemList list) const;
    [[nodiscard]] bool IsFolder(const std::string& path) const;
    /// Whether the decoder reads a file, by its name.
    [[nodiscard]] bool HasThumbnail(const std::string& path) const;

  private:
    const VolumeFiles& files_;
    PictureDecoder decoder_;
    std::map<ItemList, std::string> paths_;
    ItemList last_ = 0;
};

}  // namespace ostrevin
