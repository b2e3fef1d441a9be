#include "shell/load_globals.h"

#include "analysis/report_lines.h"

namespace kiv {

void loadGlobals(Host& host, Settings& settings) {
  LineReader lines = openLines(host, settings.projectFile, "File does not open: " + settings.projectFile);
  forEachRecord(host, std::move(lines), settings.projectFile, [&](std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
      return;
    }
    const std::string_view key = line.substr(0, equals + 1);
    const std::string_view value = line.substr(equals + 1);
    if (key == "MusDirectory=") {
      settings.musFolder = value;
    } else if (key == "NamesFile=") {
      settings.namesFile = value;
    }
  });
}

}  // namespace kiv
