#include "ProportionalLayout.h"

namespace mirvalde {

void ProportionalLayout::Add(std::string_view name, TwipRect place) {
    places_.insert_or_assign(std::string(name), place);
}

void ProportionalLayout::SetPreviousSize(double outerWidth, double outerHeight) {
    ancienneLargeur_ = static_cast<float>(outerWidth);
    ancienneHauteur_ = static_cast<float>(outerHeight);
}

bool ProportionalLayout::Form_Resize(double outerWidth, double outerHeight, bool minimised) {
    if (minimised || ancienneLargeur_ <= 0 || ancienneHauteur_ <= 0 || outerWidth <= 0 ||
        outerHeight <= 0) {
        return false;
    }
    const float rx = static_cast<float>(outerWidth) / ancienneLargeur_;
    const float ry = static_cast<float>(outerHeight) / ancienneHauteur_;
    // Controls inside a frame scale in the frame's coordinates, like the frame itself.
    for (auto& [name, place] : places_) {
        place = {place.left * rx, place.top * ry, place.width * rx, place.height * ry};
    }
    SetPreviousSize(outerWidth, outerHeight);
    return rx != 1.0f || ry != 1.0f;
}

}  // namespace mirvalde
