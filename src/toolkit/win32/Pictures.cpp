#include "toolkit/win32/Pictures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <span>
#include <string_view>
#include <vector>

#include "toolkit/win32/CommonControls.h"
#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

std::uint32_t AlphaOf(std::uint32_t point) {
    return point >> 24U;
}

/// A part of a point: red, green or blue, by the place of its lowest bit.
std::uint32_t Part(std::uint32_t point, unsigned place) {
    return point >> place & 0xFFU;
}

constexpr unsigned kRed = 16;
constexpr unsigned kGreen = 8;
constexpr unsigned kBlue = 0;

/// The widths that a picture is there in.
struct Sizes {
    std::wstring prefix;  // of the resources' names
    std::vector<int> widths;
};

BOOL CALLBACK NoteSize(HMODULE /*module*/, LPCWSTR /*type*/, LPWSTR name, LONG_PTR parameter) {
    Sizes& sizes = *reinterpret_cast<Sizes*>(parameter);
    if (!IS_INTRESOURCE(name) && std::wstring_view(name).starts_with(sizes.prefix)) {
        const wchar_t* number = name + sizes.prefix.size();
        wchar_t* end = nullptr;
        const long width = std::wcstol(number, &end, 10);
        if (end != number && *end == L'\0') {
            sizes.widths.push_back(static_cast<int>(width));
        }
    }
    return TRUE;
}

std::span<const std::byte> Resource(const std::wstring& name) {
    const HRSRC place = FindResourceW(nullptr, name.c_str(), RT_RCDATA);
    if (place == nullptr) {
        return {};
    }
    const HGLOBAL loaded = LoadResource(nullptr, place);
    return {static_cast<const std::byte*>(LockResource(loaded)), SizeofResource(nullptr, place)};
}

/// A bitmap of width x height points, and where these are.
BitmapPtr MakeBitmap(int width, int height, std::uint32_t** points) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    BitmapPtr bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    *points = static_cast<std::uint32_t*>(bits);
    return bitmap;
}

/// Copies points of 32 bits, turning the order of the rows about: bitmaps have them from the bottom up.
void CopyRows(const void* from, void* to, int width, int height) {
    const std::size_t rowSize = static_cast<std::size_t>(width) * sizeof(std::uint32_t);
    const auto rows = static_cast<std::size_t>(height);
    for (std::size_t row = 0; row < rows; ++row) {
        std::memcpy(static_cast<std::byte*>(to) + (rows - 1 - row) * rowSize,
                    static_cast<const std::byte*>(from) + row * rowSize, rowSize);
    }
}

/// Fills a picture with the points of an opaque bitmap, of any kind that Windows knows.
void ReadOpaque(const BITMAPINFO& info, const std::byte* stored, Picture& picture) {
    std::uint32_t* points = nullptr;
    const BitmapPtr bitmap = MakeBitmap(picture.width, picture.height, &points);
    if (bitmap == nullptr) {
        return;
    }
    const HDC screen = GetDC(nullptr);
    SetDIBits(screen, bitmap.get(), 0, static_cast<UINT>(picture.height), stored, &info, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    GdiFlush();
    CopyRows(points, picture.pixels.data(), picture.width, picture.height);
    for (std::uint32_t& point : picture.pixels) {
        point |= 0xFF000000U;
    }
}

/// The picture of a bitmap file. One with 32 bits to a point has alpha, all others are opaque.
Picture Parse(std::span<const std::byte> file) {
    BITMAPFILEHEADER header = {};
    if (file.size() < sizeof(header) + sizeof(BITMAPINFOHEADER)) {
        return {};
    }
    std::memcpy(&header, file.data(), sizeof(header));
    const auto& info = *reinterpret_cast<const BITMAPINFO*>(file.data() + sizeof(header));
    const std::byte* stored = file.data() + header.bfOffBits;
    Picture picture{info.bmiHeader.biWidth, info.bmiHeader.biHeight, {}};
    picture.pixels.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
    if (info.bmiHeader.biBitCount == 32) {
        CopyRows(stored, picture.pixels.data(), picture.width, picture.height);
    } else {
        ReadOpaque(info, stored, picture);
    }
    return picture;
}

/// The look of a button that cannot be pressed: grey, half transparent.
void Fade(Picture& picture) {
    for (std::uint32_t& point : picture.pixels) {
        const std::uint32_t grey =
            (Part(point, kRed) * 3 + Part(point, kGreen) * 6 + Part(point, kBlue)) / 10;
        point = AlphaOf(point) / 2 << 24U | grey << kRed | grey << kGreen | grey << kBlue;
    }
}

/// Blends a picture with a background, for controls that know no alpha. What is wholly transparent is black,
/// as such controls want it.
void Blend(Picture& picture, COLORREF background) {
    for (std::uint32_t& point : picture.pixels) {
        const std::uint32_t alpha = AlphaOf(point);
        const auto blended = [&](unsigned place, std::uint32_t behind) {
            return (Part(point, place) * alpha + behind * (255 - alpha)) / 255 << place;
        };
        point = alpha == 0
                    ? 0
                    : alpha << 24U | blended(kRed, GetRValue(background)) |
                          blended(kGreen, GetGValue(background)) | blended(kBlue, GetBValue(background));
    }
}

/// A bitmap of one bit to a point, set where the picture is wholly transparent.
BitmapPtr MakeMask(const Picture& picture) {
    const auto width = static_cast<std::size_t>(picture.width);
    const std::size_t rowSize = (width + 15) / 16 * 2;
    std::vector<std::uint8_t> bits(rowSize * static_cast<std::size_t>(picture.height));
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        if (AlphaOf(picture.pixels[i]) == 0) {
            const std::size_t column = i % width;
            std::uint8_t& eight = bits[i / width * rowSize + column / 8];
            eight = static_cast<std::uint8_t>(eight | 0x80U >> column % 8);
        }
    }
    return BitmapPtr(CreateBitmap(picture.width, picture.height, 1, 1, bits.data()));
}

}  // namespace

Picture ReadPicture(const std::string& name, int wantedWidth) {
    std::wstring prefix = Wide(name) + L'-';
    CharUpperW(prefix.data());
    Sizes sizes{prefix, {}};
    EnumResourceNamesW(nullptr, RT_RCDATA, &NoteSize, reinterpret_cast<LONG_PTR>(&sizes));
    const auto nearest = std::min_element(sizes.widths.begin(), sizes.widths.end(), [&](int left, int right) {
        return std::abs(left - wantedWidth) < std::abs(right - wantedWidth);
    });
    return nearest == sizes.widths.end() ? Picture() : Parse(Resource(prefix + std::to_wstring(*nearest)));
}

BitmapPtr MakeBitmap(const Picture& picture) {
    std::uint32_t* points = nullptr;
    BitmapPtr bitmap = MakeBitmap(picture.width, picture.height, &points);
    if (bitmap != nullptr) {
        CopyRows(picture.pixels.data(), points, picture.width, picture.height);
    }
    return bitmap;
}

NativeImages::NativeImages(Win32Toolkit& toolkit, ImageList* images, int size, COLORREF background, Look look)
    : images_(images), size_(static_cast<int>(std::lround(size * toolkit.PixelsPerInchX() / 96))) {
    if (images_ == nullptr || images_->Images().empty()) {
        return;
    }
    const int wanted = size_;
    for (const auto& [key, name] : images_->Images()) {
        Picture picture = ReadPicture(name, wanted);
        if (handle_ == nullptr) {
            size_ = picture.width > 0 ? picture.width : wanted;
            handle_ =
                ImageList_Create(size_, size_, HasCommonControls6() ? ILC_COLOR32 : ILC_COLOR24 | ILC_MASK,
                                 static_cast<int>(images_->Images().size()), 0);
        }
        if (picture.width != size_ || picture.height != size_) {
            continue;
        }
        if (look == Look::Disabled) {
            Fade(picture);
        }
        if (HasCommonControls6()) {
            places_[key] = ImageList_Add(handle_, MakeBitmap(picture).get(), nullptr);
        } else {
            Blend(picture, background);
            places_[key] = ImageList_Add(handle_, MakeBitmap(picture).get(), MakeMask(picture).get());
        }
    }
    if (handle_ != nullptr) {
        images_->Attach(*this);
        BkColorChanged();
    }
}

NativeImages::~NativeImages() {
    if (handle_ != nullptr) {
        images_->Detach(*this);
        ImageList_Destroy(handle_);
    }
}

int NativeImages::IndexOf(const std::string& key) const {
    const auto found = places_.find(key);
    return found == places_.end() ? -1 : found->second;
}

void NativeImages::BkColorChanged() {
    const bool none = images_->BkColor() == ImageList::kNoColor;
    ImageList_SetBkColor(handle_, none ? CLR_NONE : static_cast<COLORREF>(images_->BkColor()));
}

}  // namespace ostrevin::win32
