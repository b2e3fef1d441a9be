#include "platform/console/standard_input.h"

#include <iostream>

#include "platform/console/stop_signals.h"

namespace kiv {

BoundedContent readStandardInput(std::size_t limit) {
  constexpr std::size_t step = std::size_t{64} * 1024;
  BoundedContent text{"", false};
  letSignalsEndReading(true);
  while (std::cin && text.bytes->size() <= limit) {
    const std::size_t have = text.bytes->size();
    text.bytes->resize(have + step);
    std::cin.read(text.bytes->data() + have, step);
    text.bytes->resize(have + static_cast<std::size_t>(std::cin.gcount()));
  }
  letSignalsEndReading(false);
  endIfStopped();
  text.isTooLarge = text.bytes->size() > limit;
  return std::cin.bad() || text.isTooLarge ? BoundedContent{std::nullopt, text.isTooLarge} : text;
}

}  // namespace kiv
