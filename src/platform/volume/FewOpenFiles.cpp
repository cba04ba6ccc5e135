#include "platform/volume/FewOpenFiles.h"

#include <utility>

#include "platform/volume/VolumeFiles.h"

namespace ostrevin {

constexpr std::size_t kMostOpen = 64;

class FewOpenFiles::File : public InputFile {
  public:
    File(FewOpenFiles& owner, std::string path, std::unique_ptr<InputFile> file)
        : owner_(owner), path_(std::move(path)), size_(file->Size()), file_(std::move(file)) {
        owner_.NoteOpen(*this);
    }
    ~File() override { owner_.open_.remove(this); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] std::uint64_t Size() const override { return size_; }

    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        if (!file_) {
            std::int32_t result = kSuccess;
            file_ = owner_.files_.Open(path_, result);
            if (!file_ || file_->Size() != size_) {
                file_.reset();
                return 0;
            }
            owner_.NoteOpen(*this);
        }
        return file_->Read(offset, buffer);
    }

    void Close() { file_.reset(); }

  private:
    FewOpenFiles& owner_;
    std::string path_;
    std::uint64_t size_;
    std::unique_ptr<InputFile> file_;
};

std::unique_ptr<InputFile> FewOpenFiles::Open(const std::string& path, std::int32_t& result) {
    std::unique_ptr<InputFile> file = files_.Open(path, result);
    return file ? std::make_unique<File>(*this, path, std::move(file)) : nullptr;
}

void FewOpenFiles::NoteOpen(File& file) {
    open_.push_back(&file);
    if (open_.size() > kMostOpen) {
        open_.front()->Close();
        open_.pop_front();
    }
}

}  // namespace ostrevin
