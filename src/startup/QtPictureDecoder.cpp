#include "startup/QtPictureDecoder.h"

#include <memory>
#include <optional>
#include <utility>

#include "toolkit/qt/QtPictureReader.h"

namespace ostrevin {

PictureDecoder MakeQtPictureDecoder(const std::string& program) {
    const auto decode = [reader = qt::QtPictureReader(program)](std::span<const std::byte> file,
                                                                const ImageSize& size) -> BitmapHandle {
        std::optional<Picture> picture = reader.Read(file, size.cx, size.cy);
        if (!picture) {
            return nullptr;
        }
        return std::make_unique<Bitmap>(Bitmap{picture->width, picture->height, std::move(picture->pixels)});
    };
    return {qt::QtPictureReader::Reads, decode};
}

}  // namespace ostrevin
