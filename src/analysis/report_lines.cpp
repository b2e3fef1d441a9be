#include "analysis/report_lines.h"

#include <utility>

namespace kiv {

LineReader openLines(Host& host, const std::string& name, const std::string& failure) {
  auto file = host.openInput(name);
  if (!file) {
    host.fatal(failure);
  }
  return LineReader(std::move(file));
}

void checkMedium(Host& host, const LineReader& lines, const std::string& name) {
  if (lines.failed()) {
    host.runTimeError("Device I/O error", name);
  }
}

void forEachRecord(Host& host, LineReader lines, const std::string& name,
                   const std::function<void(std::string_view line)>& take) {
  while (const auto line = lines.next()) {
    if (!line->starts_with('*')) {
      take(*line);
    }
  }
  checkMedium(host, lines, name);
}

}  // namespace kiv
