#include "platform/busy_processors.h"

namespace kiv {

void leaveBusyProcessors() noexcept {}

std::optional<int> thisProcessor() noexcept {
  return std::nullopt;
}

void avoidProcessor(std::optional<int> /*processor*/, std::optional<int> /*before*/) noexcept {}

}  // namespace kiv
