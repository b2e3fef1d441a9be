#include "platform/text_records.h"

#include <utility>

#include "messages/run_time_errors.h"

namespace kiv {

LineReader openLines(Files& files, const std::string& name, const Message& failure) {
  auto file = files.openInput(name);
  if (!file) {
    endProgram(failure);
  }
  return LineReader(std::move(file));
}

void requireNoReadFailure(const LineReader& lines, const std::string& name) {
  if (lines.failed()) {
    endProgram(messages::readFailure(name));
  }
}

void forEachRecord(LineReader lines, const std::string& name, const std::function<void(std::string_view line)>& visit) {
  while (const auto line = lines.next()) {
    if (!line->starts_with('*')) {
      visit(*line);
    }
  }
  requireNoReadFailure(lines, name);
}

}  // namespace kiv
