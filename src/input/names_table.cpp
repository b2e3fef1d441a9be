#include "input/names_table.h"

#include <limits>
#include <optional>
#include <string_view>

#include "input/file_names.h"
#include "input/files.h"
#include "messages/input_messages.h"
#include "platform/line_reader.h"
#include "platform/separators.h"

namespace kiv {
namespace {

constexpr std::string_view recordEnd = " 1";

enum class Loading { continues, isOver };

/// One load of the names file. It is closed before it is shown or deleted.
class NamesLoader {
 public:
  NamesLoader(const Host& host, const std::string& namesFile, NamesTable& names)
      : host_(host), namesFile_(namesFile), names_(names) {}

  void load();

 private:
  Loading addLine(std::string_view lineWithBlanks);
  std::string addRecord(const std::string& line, bool terminated);
  Loading checkRecord(const std::string& record, bool terminated);
  Loading checkFile(const std::string& name);
  Loading refuse(const Message& message);

  const Host& host_;
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
  if (auto file = host_.files.openInput(namesFile_)) {
    lines_.emplace(std::move(file));
    while (const auto line = lines_->next()) {
      if (addLine(*line) == Loading::isOver) {
        return;
      }
    }
    lines_.reset();
  }
  names_.namesValid = names_.namesValid || names_.nameCount > 0;
}

Loading NamesLoader::addLine(std::string_view lineWithBlanks) {
  const std::string line = withoutTrailingBlanks(lineWithBlanks);
  if (line.empty() || line.starts_with(' ') || line.starts_with('*')) {
    return Loading::continues;
  }
  const bool terminated = line.ends_with(recordEnd);
  const std::string record = addRecord(line, terminated);
  return names_.nameCount == 0 ? Loading::continues : checkRecord(record, terminated);
}

std::string NamesLoader::addRecord(const std::string& line, bool terminated) {
  if (!terminated) {
    host_.user.show(messages::recordNotTerminated(line, namesFile_));
    return line;
  }
  std::string name = host_.machine.upperCase(std::string_view(line).substr(0, line.size() - recordEnd.size()));
  // The count has 16 bits. A name beyond it replaces the last one.
  if (names_.nameCount < std::numeric_limits<std::int16_t>::max()) {
    ++names_.nameCount;
    names_.nameList.push_back(name);
  } else {
    names_.nameList.back() = name;
  }
  return name;
}

Loading NamesLoader::checkRecord(const std::string& record, bool terminated) {
  if (lastBackslash(host_.machine, record) == std::string::npos) {
    return refuse(messages::recordWithoutFolder(record, namesFile_));
  }
  const std::string prefix = justPath(host_.machine, record);
  if (terminated && names_.nameCount == 1) {
    names_.firstPrefix = prefix;
  } else if (prefix != names_.firstPrefix) {
    return refuse(messages::foldersDiffer(namesFile_));
  }
  const std::string& latest = names_.nameList.back();
  const Fetch fetch = fetchOf(names_.nameList.size() - 1);
  return existingWillOpen(host_.files, host_.machine, latest, fetch) ? Loading::continues : checkFile(latest);
}

Loading NamesLoader::refuse(const Message& message) {
  host_.user.show(message);
  lines_.reset();
  ViewFile(host_, namesFile_);
  host_.files.deleteFile(namesFile_);
  names_.nameCount = 0;
  return Loading::isOver;
}

/// The name's file is not there. A diskette may only be missing from its drive, so then the names file is kept.
Loading NamesLoader::checkFile(const std::string& name) {
  const std::string drive = host_.machine.upperCase(std::string_view(name).substr(0, 2));
  const bool diskette = drive == "A:" || drive == "B:";
  if (diskette) {
    host_.user.show(messages::fileMissingOnDiskette(name));
    lines_.reset();
    names_.nameCount = 0;
    return Loading::isOver;
  }
  host_.user.show(messages::fileMissing(name));
  lines_.reset();
  ViewFile(host_, namesFile_);
  if (host_.files.deleteFile(namesFile_)) {
    names_.nameCount = 0;
  } else {
    host_.user.show(messages::namesFileNotErased(namesFile_));
  }
  return Loading::isOver;
}

}  // namespace

void LoadNamesTable(const Host& host, const std::string& namesFile, NamesTable& names) {
  NamesLoader(host, namesFile, names).load();
}

void cmdViewNames_Click(const Host& host, const std::string& namesFile) {
  if (!FileExists(host, namesFile)) {
    endProgram(messages::namesFileNotCreated(namesFile));
  }
  ViewFile(host, namesFile);
  throw ProgramEnd{0};
}

}  // namespace kiv
