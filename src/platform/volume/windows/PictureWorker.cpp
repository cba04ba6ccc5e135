#include "platform/volume/windows/PictureWorker.h"

#include <windows.h>
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <ole2.h>
#include <olectl.h>
#include <span>
#include <string_view>

#include "platform/volume/JpegOrientation.h"

namespace ostrevin {
namespace {

constexpr int kDone = 0;
constexpr int kNoPicture = 1;
constexpr int kUsage = 2;

using Bytes = std::vector<std::byte>;

struct Size {
    int width = 0;
    int height = 0;
};

struct Points {
    Size size;
    std::vector<std::uint32_t> points;
};

/// A picture of points that the device-independent calls draw into.
class Canvas {
  public:
    explicit Canvas(const Size& size) : size_(size), context_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.width;
        info.bmiHeader.biHeight = -size.height;  // from the top
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* points = nullptr;
        bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &points, nullptr, 0);
        points_ = static_cast<std::uint32_t*>(points);
        before_ = SelectObject(context_, bitmap_);
    }
    ~Canvas() {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    [[nodiscard]] bool IsMade() const { return points_ != nullptr; }
    [[nodiscard]] HDC Context() const { return context_; }
    [[nodiscard]] std::uint32_t At(int x, int y) const {
        constexpr std::uint32_t kOpaque = 0xFF000000;
        return points_[static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.width) +
                       static_cast<std::size_t>(x)] |
               kOpaque;
    }

  private:
    Size size_;
    HDC context_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
    std::uint32_t* points_ = nullptr;
};

Bytes ReadInput() {
    constexpr std::size_t kMost = std::size_t{64} << 20U;
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    Bytes bytes;
    std::vector<std::byte> block(std::size_t{1} << 16U);
    DWORD count = 0;
    while (bytes.size() <= kMost &&
           ReadFile(input, block.data(), static_cast<DWORD>(block.size()), &count, nullptr) != 0 &&
           count > 0) {
        bytes.insert(bytes.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(count));
    }
    return bytes.size() <= kMost ? bytes : Bytes();
}

bool WriteOutput(std::span<const std::byte> bytes) {
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    while (!bytes.empty()) {
        DWORD written = 0;
        if (WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) == 0) {
            return false;
        }
        bytes = bytes.subspan(written);
    }
    return true;
}

/// Whether a file is plain points, by its first bytes: what OLE reads besides can hold drawing orders.
bool IsPicture(const Bytes& file) {
    constexpr std::array<std::string_view, 3> kBeginnings = {"\xFF\xD8\xFF", "GIF8", "BM"};
    return std::any_of(kBeginnings.begin(), kBeginnings.end(), [&](std::string_view beginning) {
        return file.size() > beginning.size() &&
               std::memcmp(file.data(), beginning.data(), beginning.size()) == 0;
    });
}

/// What OLE makes of a file; null when it is no picture of points. The caller releases it.
IPicture* Load(const Bytes& file) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, file.size());
    IStream* stream = nullptr;
    if (memory == nullptr || FAILED(CreateStreamOnHGlobal(memory, TRUE, &stream))) {
        return nullptr;
    }
    std::memcpy(GlobalLock(memory), file.data(), file.size());
    GlobalUnlock(memory);
    IPicture* picture = nullptr;
    const HRESULT result = OleLoadPicture(stream, static_cast<LONG>(file.size()), FALSE, IID_IPicture,
                                          reinterpret_cast<void**>(&picture));
    stream->Release();
    return SUCCEEDED(result) ? picture : nullptr;
}

/// The size of a loaded picture, in points.
Size StoredSize(IPicture& picture) {
    OLE_HANDLE handle = 0;
    BITMAP bitmap{};
    SHORT type = PICTYPE_NONE;
    if (FAILED(picture.get_Type(&type)) || type != PICTYPE_BITMAP || FAILED(picture.get_Handle(&handle))) {
        return {};
    }
    const auto object = reinterpret_cast<HGDIOBJ>(static_cast<std::uintptr_t>(handle));
    return GetObjectW(object, sizeof bitmap, &bitmap) != 0 ? Size{bitmap.bmWidth, bitmap.bmHeight} : Size();
}

/// The largest size within the box that keeps the ratio and does not grow.
Size Fitting(const Size& size, const Size& box) {
    if (size.width <= box.width && size.height <= box.height) {
        return size;
    }
    const std::int64_t width = size.width;
    const std::int64_t height = size.height;
    return width * box.height > height * box.width
               ? Size{box.width, std::max(static_cast<int>(height * box.width / width), 1)}
               : Size{std::max(static_cast<int>(width * box.height / height), 1), box.height};
}

/// The points of a picture of this size as it hangs upright, for an orientation of 1 to 8.
Points Upright(const Canvas& stored, const Size& size, int orientation) {
    const bool turned = orientation > 4;  // a row of what is shown is a column of what is stored
    const bool fromRight = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
    const bool fromBottom = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    Points upright{turned ? Size{size.height, size.width} : size, {}};
    for (int row = 0; row < upright.size.height; ++row) {
        for (int column = 0; column < upright.size.width; ++column) {
            const int x = turned ? row : column;
            const int y = turned ? column : row;
            upright.points.push_back(
                stored.At(fromRight ? size.width - 1 - x : x, fromBottom ? size.height - 1 - y : y));
        }
    }
    return upright;
}

/// The picture on white, upright, scaled down to fit the box; without points where that cannot be.
Points Draw(IPicture& picture, int orientation, Size box) {
    constexpr std::int64_t kMostPoints = 100'000'000;
    const Size stored = StoredSize(picture);
    if (stored.width <= 0 || stored.height <= 0 || std::int64_t{stored.width} * stored.height > kMostPoints) {
        return {};
    }
    if (orientation > 4) {
        std::swap(box.width, box.height);  // the picture is turned after it was scaled
    }
    const Size size = Fitting(stored, box);
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    const Canvas whole(stored);
    const Canvas scaled(size);
    if (!whole.IsMade() || !scaled.IsMade() || FAILED(picture.get_Width(&width)) ||
        FAILED(picture.get_Height(&height))) {
        return {};
    }
    PatBlt(whole.Context(), 0, 0, stored.width, stored.height, WHITENESS);
    if (FAILED(picture.Render(whole.Context(), 0, 0, stored.width, stored.height, 0, height, width, -height,
                              nullptr))) {
        return {};
    }
    SetStretchBltMode(scaled.Context(), HALFTONE);
    SetBrushOrgEx(scaled.Context(), 0, 0, nullptr);
    if (StretchBlt(scaled.Context(), 0, 0, size.width, size.height, whole.Context(), 0, 0, stored.width,
                   stored.height, SRCCOPY) == 0) {
        return {};
    }
    GdiFlush();
    return Upright(scaled, size, orientation);
}

int Work(const Size& box) {
    const Bytes file = ReadInput();
    IPicture* picture = IsPicture(file) ? Load(file) : nullptr;
    if (picture == nullptr) {
        return kNoPicture;
    }
    const Points drawn = Draw(*picture, JpegOrientation(file), box);
    picture->Release();
    const std::array<std::int32_t, 2> header = {drawn.size.width, drawn.size.height};
    const bool written = !drawn.points.empty() && WriteOutput(std::as_bytes(std::span(header))) &&
                         WriteOutput(std::as_bytes(std::span(drawn.points)));
    return written ? kDone : kNoPicture;
}

int NumberIn(const std::string& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

}  // namespace

std::optional<int> RunPictureWorker(const std::vector<std::string>& arguments) {
    if (arguments.empty() || arguments[0] != kDecodePicture) {
        return std::nullopt;
    }
    const Size box = arguments.size() == 3 ? Size{NumberIn(arguments[1]), NumberIn(arguments[2])} : Size();
    if (box.width <= 0 || box.height <= 0) {
        return kUsage;
    }
    // Whoever looks at a list of documents is not to be asked about a picture that broke its decoder.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    if (FAILED(CoInitialize(nullptr))) {
        return kNoPicture;
    }
    const int result = Work(box);
    CoUninitialize();
    return result;
}

}  // namespace ostrevin
