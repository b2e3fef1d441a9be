#include "shell/load_globals.h"

#include "messages/shell_messages.h"
#include "platform/text_records.h"

namespace kiv {

void loadGlobals(Files& files, Settings& settings) {
  LineReader lines = openLines(files, settings.projectFile, messages::settingsFileNotOpened(settings.projectFile));
  forEachRecord(std::move(lines), settings.projectFile, [&](std::string_view line) {
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
