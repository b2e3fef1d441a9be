#include "platform/console/standard_input.h"

#include <cstdio>

#include "platform/console/stop_signals.h"

namespace kiv {

BoundedContent readStandardInput(std::size_t limit) {
  constexpr std::size_t step = std::size_t{64} * 1024;
  BoundedContent text{"", false};
  letSignalsEndReading(true);
  std::size_t got = step;
  while (got == step && text.bytes->size() <= limit) {
    const std::size_t have = text.bytes->size();
    text.bytes->resize(have + step);
    got = std::fread(text.bytes->data() + have, 1, step, stdin);
    text.bytes->resize(have + got);
  }
  letSignalsEndReading(false);
  endIfStopped();
  text.isTooLarge = text.bytes->size() > limit;
  const bool isReadable = std::ferror(stdin) == 0;
  return !isReadable || text.isTooLarge ? BoundedContent{std::nullopt, text.isTooLarge} : text;
}

}  // namespace kiv
