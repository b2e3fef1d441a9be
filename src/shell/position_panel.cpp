#include "shell/position_panel.h"

#include <cmath>

#include "base/number.h"
#include "platform/external_programs.h"

namespace kiv {
namespace {

/// Half of the room that a window leaves, in whole twips and without the fraction.
double halfOfTheRest(double screen, double window) {
  return std::trunc(std::nearbyint(screen - window) / 2);
}

}  // namespace

void positionPanel(Host& host, Panel& panel) {
  const std::string top = GetProfileKey(host, "TOP");
  const std::string left = GetProfileKey(host, "LEFT");
  if (!top.empty() && !left.empty()) {
    panel.place.left = numericValue(left);
    panel.place.top = numericValue(top);
    return;
  }
  panel.place.left = halfOfTheRest(panel.screenWidth, panel.place.width);
  panel.place.top = halfOfTheRest(panel.screenHeight, panel.place.height);
}

}  // namespace kiv
