#include "input/names_table.h"

#include <limits>
#include <optional>
#include <string_view>

#include "input/file_names.h"
#include "input/files.h"
#include "platform/line_reader.h"

namespace kiv {
namespace {

constexpr std::string_view recordEnd = " 1";
constexpr const char* deletedAfterView = "Names file will be deleted after view.";

/// Pages that are fetched from the disk before they are wanted: as much of a large group as no memory is too small for.
constexpr std::int16_t announcedFiles = 1000;

enum class Loading { goesOn, isOver };

/// One load of the names file. It is closed before it is shown or deleted.
class NamesLoader {
 public:
  NamesLoader(Host& host, const std::string& namesFile, NamesTable& names)
      : host_(host), namesFile_(namesFile), names_(names) {}

  void load();

 private:
  Loading takeLine(std::string_view lineWithBlanks);
  std::string takeRecord(const std::string& line, bool terminated);
  Loading checkRecord(const std::string& record, bool terminated);
  Loading checkFile(const std::string& name);
  Loading refuse(const std::string& message);

  Host& host_;
  const std::string& namesFile_;
  NamesTable& names_;
  std::optional<LineReader> lines_;
};

std::string withoutTrailingBlanks(std::string_view line) {
  return std::string(line.substr(0, line.find_last_not_of(' ') + 1));
}

void NamesLoader::load() {
  names_.nameCount = 0;
  names_.nameList.clear();
  if (auto file = host_.openInput(namesFile_)) {
    lines_.emplace(std::move(file));
    while (const auto line = lines_->next()) {
      if (takeLine(*line) == Loading::isOver) {
        return;
      }
    }
    lines_.reset();
  }
  names_.namesValid = names_.namesValid || names_.nameCount > 0;
}

Loading NamesLoader::takeLine(std::string_view lineWithBlanks) {
  const std::string line = withoutTrailingBlanks(lineWithBlanks);
  if (line.empty() || line.starts_with(' ') || line.starts_with('*')) {
    return Loading::goesOn;
  }
  const bool terminated = line.ends_with(recordEnd);
  const std::string record = takeRecord(line, terminated);
  return names_.nameCount == 0 ? Loading::goesOn : checkRecord(record, terminated);
}

std::string NamesLoader::takeRecord(const std::string& line, bool terminated) {
  if (!terminated) {
    host_.inform("Filename [" + line + "] in Names file not terminated by ' 1'. Hit enter to continue.");
    return line;
  }
  std::string name = host_.upperCase(std::string_view(line).substr(0, line.size() - recordEnd.size()));
  // The count has 16 bits. A name that it has no number for takes the last place.
  if (names_.nameCount < std::numeric_limits<std::int16_t>::max()) {
    ++names_.nameCount;
    names_.nameList.push_back(name);
  } else {
    names_.nameList.back() = name;
  }
  return name;
}

Loading NamesLoader::checkRecord(const std::string& record, bool terminated) {
  if (record.find('\\') == std::string::npos) {
    return refuse("Invalid record format in Names file.\r\nName must have a path prefix:\r\n" + record + "\r\n" +
                  deletedAfterView);
  }
  const std::string prefix = justPath(record);
  if (terminated && names_.nameCount == 1) {
    names_.firstPrefix = prefix;
  } else if (prefix != names_.firstPrefix) {
    return refuse(std::string("Names in Names file do not all have the same path prefix.\r\n"
                              "This is a requirement for KivSystem.\r\n") +
                  deletedAfterView);
  }
  const std::string& latest = names_.nameList.back();
  const auto file = openExisting(host_, latest);
  if (!file) {
    return checkFile(latest);
  }
  if (names_.nameCount <= announcedFiles) {
    file->announce();
  }
  return Loading::goesOn;
}

Loading NamesLoader::refuse(const std::string& message) {
  host_.inform(message);
  lines_.reset();
  ViewFile(host_, namesFile_);
  host_.deleteFile(namesFile_);
  names_.nameCount = 0;
  return Loading::isOver;
}

/// The name's file is not there. A diskette may only be missing from its drive, so then the names file is kept.
Loading NamesLoader::checkFile(const std::string& name) {
  const std::string drive = host_.upperCase(std::string_view(name).substr(0, 2));
  const bool diskette = drive == "A:" || drive == "B:";
  const std::string message = " [" + name + "] refers to non-existing or unaccessable file\r\n";
  if (diskette) {
    host_.inform("Name in names file" + message + "Define a new names file by music file selection.");
    lines_.reset();
    names_.nameCount = 0;
    return Loading::isOver;
  }
  host_.inform("Name in Names file" + message + deletedAfterView);
  lines_.reset();
  ViewFile(host_, namesFile_);
  if (host_.deleteFile(namesFile_)) {
    names_.nameCount = 0;
  } else {
    host_.inform("Failed to erase " + namesFile_);
  }
  return Loading::isOver;
}

}  // namespace

void LoadNamesTable(Host& host, const std::string& namesFile, NamesTable& names) {
  NamesLoader(host, namesFile, names).load();
}

void cmdViewNames_Click(Host& host, const std::string& namesFile) {
  if (!FileExists(host, namesFile)) {
    host.fatal(namesFile + " creation failed. Programming error. Hit OK to abort");
  }
  ViewFile(host, namesFile);
  throw ProgramEnd{0};
}

}  // namespace kiv
