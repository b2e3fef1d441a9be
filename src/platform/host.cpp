#include "platform/host.h"

#include "platform/file_buffer.h"

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
  FileRoom room;
  const auto content = room.read(host, name, limit);
  return content ? std::optional<std::string>(*content) : std::nullopt;
}

}  // namespace kiv
