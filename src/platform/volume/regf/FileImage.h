// The bytes of a file, of which each piece is read when it is first asked for.
//
// Hives can be large, and little of one is used. So the image is a range of addresses as long as the file,
// and memory is given to the pieces in use. They are read, not mapped: a file that shrinks and a disk that
// fails leave zeros, not a signal, and what was read once stays as it is.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "platform/Platform.h"
#include "platform/volume/ReservedMemory.h"
#include "platform/volume/regf/Bytes.h"

namespace ostrevin::regf {

class FileImage {
  public:
    static constexpr std::size_t kPiece = 65536;

    /// The file has to live as long as the image, which can grow by so many bytes. Throws std::bad_alloc when
    /// there are not enough addresses.
    explicit FileImage(InputFile& file, std::size_t growth = 0);

    /// What to do when a piece cannot be read as a whole; zeros stand in its place.
    void OnUnreadable(std::function<void()> tell) { onUnreadable_ = std::move(tell); }

    [[nodiscard]] std::size_t Size() const { return size_; }
    /// Bytes from an offset on; fewer where the image ends. They stay in place as long as the image.
    [[nodiscard]] Bytes At(std::size_t at, std::size_t size) const;
    /// Copies bytes that are needed once, and keeps no memory for them. Returns how many there are.
    std::size_t Copy(std::size_t at, std::span<std::byte> to) const;

    // Changes of the image, none of which reach the file.

    /// Overwrites bytes; all of them lie within the image.
    void Write(std::size_t at, Bytes content);
    /// Appends zeros; false when that is more than the image can grow.
    [[nodiscard]] bool GrowTo(std::size_t size);
    /// Reads all that was not read yet; the image needs the file no more.
    void ReadAll();
    /// Makes the image what the file is.
    void Forget();

    /// How many bytes of memory the image has.
    [[nodiscard]] std::size_t Held() const { return held_; }

  private:
    void Load(std::size_t piece) const;
    /// Reads what of the file there is; the rest becomes zeros.
    void ReadFile(std::size_t at, std::span<std::byte> to) const;

    InputFile* file_;
    std::size_t fileSize_;
    std::size_t size_;
    std::size_t room_;
    mutable ReservedMemory memory_;
    mutable std::vector<bool> isLoaded_;  // by piece
    mutable std::vector<bool> isProvided_;
    mutable std::size_t held_ = 0;
    std::function<void()> onUnreadable_;
};

}  // namespace ostrevin::regf
