// The shell's namespace of the made-up host.
#include <utility>

#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

class MemoryShellMalloc : public ShellMalloc {
  public:
    explicit MemoryShellMalloc(MemoryPlatform& platform) : platform_(platform) {}
    void Free(ItemList list) override {
        platform_.shellCalls.push_back("free " + platform_.itemLists[list]);
        platform_.itemLists.erase(list);
    }

  private:
    MemoryPlatform& platform_;
};

}  // namespace

class MemoryImageExtractor : public ImageExtractor {
  public:
    MemoryImageExtractor(MemoryPlatform& platform, const MemoryFile& file)
        : platform_(platform), file_(file) {}

    bool GetLocation(TextBuffer& location, std::uint32_t& /*priority*/, const ImageSize& size,
                     std::uint32_t colorDepth, std::uint32_t& flags) override {
        platform_.shellCalls.push_back("location " + std::to_string(size.cx) + " x " +
                                       std::to_string(size.cy) + ", " + std::to_string(colorDepth) +
                                       " bits, flags " + std::to_string(flags) + ", buffer " +
                                       std::to_string(location.capacity));
        if (platform_.FailureOf("GetLocation") != kSuccess) {
            return false;
        }
        location.text = file_.path;
        return true;
    }
    bool Extract(BitmapHandle& bitmap) override {
        platform_.shellCalls.push_back("extract " + file_.path);
        if (platform_.FailureOf("Extract") != kSuccess) {
            return false;
        }
        bitmap = file_.thumbnail ? std::make_unique<Bitmap>(*file_.thumbnail) : nullptr;
        return true;
    }

  private:
    MemoryPlatform& platform_;
    const MemoryFile& file_;
};

class MemoryShellFolder : public ShellFolder {
  public:
    /// The path ends in "\"; it is empty for the desktop.
    MemoryShellFolder(MemoryPlatform& platform, std::string path)
        : platform_(platform), path_(std::move(path)) {}

    bool ParseDisplayName(const std::string& name, ItemList& list) override {
        platform_.shellCalls.push_back("parse " + name);
        const MemoryFile* item = name.empty() ? nullptr : platform_.Find(path_ + name);
        if (platform_.FailureOf("ParseDisplayName") != kSuccess || item == nullptr) {
            return false;
        }
        list = platform_.nextItemList_++;
        platform_.itemLists[list] = item->path;
        return true;
    }
    bool BindToObject(ItemList list, std::unique_ptr<ShellFolder>& folder) override {
        const std::string path = PathOf(list);
        platform_.shellCalls.push_back("bind " + path);
        const MemoryFile* item = platform_.Find(path);
        if (platform_.FailureOf("BindToObject") != kSuccess || item == nullptr ||
            (item->attributes & kAttributeDirectory) == 0) {
            return false;
        }
        folder = std::make_unique<MemoryShellFolder>(platform_, path + "\\");
        return true;
    }
    bool GetUIObjectOf(ItemList item, std::unique_ptr<ImageExtractor>& extractor) override {
        const std::string path = PathOf(item);
        platform_.shellCalls.push_back("object " + path);
        const MemoryFile* file = platform_.Find(path);
        if (platform_.FailureOf("GetUIObjectOf") != kSuccess || file == nullptr || !file->hasThumbnail) {
            return false;
        }
        extractor = std::make_unique<MemoryImageExtractor>(platform_, *file);
        return true;
    }

  private:
    [[nodiscard]] std::string PathOf(ItemList list) const {
        const auto found = platform_.itemLists.find(list);
        return found == platform_.itemLists.end() ? std::string() : found->second;
    }

    MemoryPlatform& platform_;
    std::string path_;
};

std::unique_ptr<ShellFolder> MemoryPlatform::SHGetDesktopFolder() {
    shellCalls.emplace_back("desktop");
    return FailureOf("SHGetDesktopFolder") == kSuccess ? std::make_unique<MemoryShellFolder>(*this, "")
                                                       : nullptr;
}

std::unique_ptr<ShellMalloc> MemoryPlatform::SHGetMalloc() {
    shellCalls.emplace_back("malloc");
    return FailureOf("SHGetMalloc") == kSuccess ? std::make_unique<MemoryShellMalloc>(*this) : nullptr;
}

}  // namespace ostrevin
