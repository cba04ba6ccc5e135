#include "controls/Container.h"

#include "controls/Form.h"
#include "controls/Toolkit.h"

namespace ostrevin {
namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kPointsPerInch = 72;

double TwipsPerUnit(ScaleMode mode, double twipsPerPixel) {
    switch (mode) {
        case ScaleMode::Point:
            return kTwipsPerInch / kPointsPerInch;
        case ScaleMode::Pixel:
            return twipsPerPixel;
        case ScaleMode::Twip:
            break;
    }
    return 1;
}

double Convert(double length, ScaleMode from, ScaleMode to, double twipsPerPixel) {
    return from == to ? length : length * TwipsPerUnit(from, twipsPerPixel) / TwipsPerUnit(to, twipsPerPixel);
}

}  // namespace

double Container::ScaleWidth() {
    return ScaleX(Width(), Parent()->ScaleMode(), scaleMode_);
}

double Container::ScaleHeight() {
    return ScaleY(Height(), Parent()->ScaleMode(), scaleMode_);
}

double Container::ScaleX(double length, enum ScaleMode from, enum ScaleMode to) {
    return Convert(length, from, to, kTwipsPerInch / ParentForm().GetToolkit().PixelsPerInchX());
}

double Container::ScaleY(double length, enum ScaleMode from, enum ScaleMode to) {
    return Convert(length, from, to, kTwipsPerInch / ParentForm().GetToolkit().PixelsPerInchY());
}

void Container::Remove(Control& control) {
    std::erase(controls_, &control);
}

}  // namespace ostrevin
