#include "shell/position_panel.h"

#include <cmath>

#include "base/number.h"
#include "platform/external_programs.h"

namespace kiv {
namespace {

/// Half of the space that a window leaves, in whole twips and without the fraction.
double halfOfRemainder(double screen, double window) {
  return std::trunc(std::nearbyint(screen - window) / 2);
}

}  // namespace

void positionPanel(Machine& machine, Panel& panel) {
  const std::string top = GetProfileKey(machine, "TOP");
  const std::string left = GetProfileKey(machine, "LEFT");
  if (!top.empty() && !left.empty()) {
    panel.place.left = numericValue(left);
    panel.place.top = numericValue(top);
    return;
  }
  panel.place.left = halfOfRemainder(panel.screenWidth, panel.place.width);
  panel.place.top = halfOfRemainder(panel.screenHeight, panel.place.height);
}

}  // namespace kiv
