#include "platform/volume/regf/FileImage.h"

#include <algorithm>
#include <limits>
#include <new>
#include <tuple>

namespace ostrevin::regf {
namespace {

std::size_t AddressesFor(std::uint64_t fileSize, std::size_t growth) {
    constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max() / 2;
    if (fileSize > kMost || growth > kMost) {
        throw std::bad_alloc();
    }
    return static_cast<std::size_t>(fileSize) + growth;
}

}  // namespace

FileImage::FileImage(InputFile& file, std::size_t growth)
    : file_(&file),
      fileSize_(AddressesFor(file.Size(), 0)),
      size_(fileSize_),
      room_(AddressesFor(file.Size(), growth)),
      memory_(room_),
      isLoaded_((room_ + kPiece - 1) / kPiece),
      isProvided_(isLoaded_.size()) {}

Bytes FileImage::At(std::size_t at, std::size_t size) const {
    if (at >= size_) {
        return {};
    }
    size = std::min(size, size_ - at);
    for (std::size_t piece = at / kPiece; piece * kPiece < at + size; ++piece) {
        if (!isLoaded_[piece]) {
            Load(piece);
        }
    }
    return {memory_.Data() + at, size};
}

std::size_t FileImage::Copy(std::size_t at, std::span<std::byte> to) const {
    if (at >= size_) {
        return 0;
    }
    to = to.first(std::min(to.size(), size_ - at));
    for (std::size_t done = 0; done < to.size();) {
        const std::size_t piece = (at + done) / kPiece;
        const auto part = to.subspan(done, std::min(to.size() - done, (piece + 1) * kPiece - at - done));
        if (isLoaded_[piece]) {
            std::copy_n(memory_.Data() + at + done, part.size(), part.begin());
        } else {
            ReadFile(at + done, part);
        }
        done += part.size();
    }
    return to.size();
}

void FileImage::Write(std::size_t at, Bytes content) {
    std::ignore = At(at, content.size());
    std::ranges::copy(content, memory_.Data() + at);
}

bool FileImage::GrowTo(std::size_t size) {
    if (size > room_) {
        return false;
    }
    size_ = std::max(size_, size);
    return true;
}

void FileImage::ReadAll() {
    std::ignore = At(0, size_);
}

void FileImage::Forget() {
    isLoaded_.assign(isLoaded_.size(), false);
    size_ = fileSize_;
}

void FileImage::Load(std::size_t piece) const {
    const std::size_t at = piece * kPiece;
    const std::size_t size = std::min(kPiece, room_ - at);
    if (!isProvided_[piece]) {
        memory_.Provide(at, size);
        isProvided_[piece] = true;
        held_ += size;
    }
    ReadFile(at, {memory_.Data() + at, size});
    isLoaded_[piece] = true;
}

void FileImage::ReadFile(std::size_t at, std::span<std::byte> to) const {
    const std::size_t wanted = at < fileSize_ ? std::min(to.size(), fileSize_ - at) : 0;
    const std::size_t got = wanted == 0 ? 0 : file_->Read(at, to.first(wanted));
    std::ranges::fill(to.subspan(got), std::byte{0});
    if (got < wanted && onUnreadable_) {
        onUnreadable_();
    }
}

}  // namespace ostrevin::regf
