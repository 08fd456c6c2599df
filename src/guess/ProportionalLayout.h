#pragma once

#include <map>
#include <string>
#include <string_view>

#include "Form1Design.h"

namespace mirvalde {

// Keeps every control's place exact, in twips, while the window is scaled up and down, so
// that rounding to pixels happens only when a place is applied and never accumulates.
class ProportionalLayout {
  public:
    void Add(std::string_view name, TwipRect place);
    // Scales every place by the ratio of the window's new outer size to the previous one
    // (`AncienneLargeur`, `AncienneHauteur`), and remembers the new size. Does nothing while
    // the window is minimised or before a previous size is known.
    bool Form_Resize(double outerWidth, double outerHeight, bool minimised);

    void SetPreviousSize(double outerWidth, double outerHeight);
    float AncienneLargeur() const { return ancienneLargeur_; }
    float AncienneHauteur() const { return ancienneHauteur_; }

    const std::map<std::string, TwipRect, std::less<>>& Places() const { return places_; }

  private:
    std::map<std::string, TwipRect, std::less<>> places_;
    float ancienneLargeur_ = 0;
    float ancienneHauteur_ = 0;
};

}  // namespace mirvalde
