// Small images, addressed by upper-case keys.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ostrevin {

/// What holds the images natively, for one of the controls that show them. A toolkit whose images are
/// transparent by themselves needs none.
class ImageListView {
  public:
    ImageListView() = default;
    ImageListView(const ImageListView&) = delete;
    ImageListView& operator=(const ImageListView&) = delete;
    virtual ~ImageListView() = default;
    virtual void BkColorChanged() = 0;
};

/// Knows its images by the names of the program's own pictures; what is drawn is the toolkit's.
class ImageList {
  public:
    /// Images are transparent where they have no background.
    static constexpr std::int32_t kNoColor = -1;

    void Add(const std::string& key, const std::string& picture) { images_.emplace_back(key, picture); }
    [[nodiscard]] const std::vector<std::pair<std::string, std::string>>& Images() const { return images_; }
    /// The picture of a key, or "".
    [[nodiscard]] std::string PictureOf(const std::string& key) const {
        for (const auto& [name, picture] : images_) {
            if (name == key) {
                return picture;
            }
        }
        return {};
    }
    [[nodiscard]] std::int32_t BkColor() const { return bkColor_; }
    void SetBkColor(std::int32_t color) {
        bkColor_ = color;
        for (ImageListView* view : views_) {
            view->BkColorChanged();
        }
    }
    void Attach(ImageListView& view) { views_.push_back(&view); }
    void Detach(ImageListView& view) { views_.erase(std::find(views_.begin(), views_.end(), &view)); }

  private:
    std::vector<std::pair<std::string, std::string>> images_;
    std::int32_t bkColor_ = 0xFFFFFF;
    std::vector<ImageListView*> views_;
};

}  // namespace ostrevin
