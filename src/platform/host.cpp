#include "platform/host.h"

#include <algorithm>

namespace kiv {
namespace {

std::string_view textOf(RunTimeError error) {
  switch (error) {
    case RunTimeError::subscriptOutOfRange:
      return "Subscript out of range";
    case RunTimeError::overflow:
      return "Overflow";
    case RunTimeError::typeMismatch:
      return "Type mismatch";
    case RunTimeError::divisionByZero:
      return "Division by zero";
  }
  return "";
}

}  // namespace

void Host::fatal(std::string_view text) {
  message(Icon::critical, text, Buttons::ok);
  throw ProgramEnd{1};
}

void Host::runTimeError(RunTimeError error, std::string_view workedOn) {
  runTimeError(textOf(error), workedOn);
}

void Host::runTimeError(std::string_view platformText, std::string_view workedOn) {
  fatal("Run-time error: " + std::string(platformText) + "\r\n" + std::string(workedOn));
}

std::optional<std::string> readWhole(Host& host, const std::string& name, std::size_t limit) {
  const auto file = host.openInput(name);
  if (!file) {
    return std::nullopt;
  }
  constexpr std::size_t step = std::size_t{64} * 1024;
  std::string content;
  while (content.size() < limit) {
    const std::size_t have = content.size();
    content.resize(have + std::min(step, limit - have));
    const auto got = file->read(std::span(content).subspan(have));
    if (!got) {
      return std::nullopt;
    }
    content.resize(have + *got);
    if (*got == 0) {
      break;
    }
  }
  return content;
}

}  // namespace kiv
