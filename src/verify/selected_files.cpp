#include "verify/selected_files.h"

#include <string_view>

#include "platform/separators.h"
#include "verify/text_lines.h"

namespace kiv::proof {
namespace {

constexpr std::string_view recordEnd = " 1";
constexpr std::string_view reservedName = "WORK0001.MUS";
constexpr std::size_t mostNames = 32767;

std::string folderOf(Machine& machine, const std::string& name) {
  return name.substr(0, lastBackslash(machine, name) + 1);
}

/// Lines that are empty, begin with a blank, or are comments list nothing.
bool listsNothing(std::string_view line) {
  return line.empty() || line.front() == ' ' || line.front() == '*';
}

/// Why an analysis stops at a line, as a phrase about the names file; "" when it does not.
std::string reasonToStop(Machine& machine, std::string_view line, const std::string& name, const std::string& folder) {
  if (lastBackslash(machine, name) == std::string::npos) {
    return "has a line without a folder: " + std::string(line);
  }
  return folderOf(machine, name) == folder ? "" : "lists files of more than one folder: " + std::string(line);
}

class NamesReader {
 public:
  NamesReader(Files& files, Machine& machine, const std::string& namesFile)
      : files_(files), machine_(machine), namesFile_(namesFile) {}

  SelectedFiles read();

 private:
  void addLine(std::string_view line);
  void fail(const std::string& file, const std::string& what) {
    if (!selected_.failure) {
      selected_.failure = Finding{file, 0, what};
    }
  }
  bool canBeRead(const std::string& name) {
    return !hasTwoBackslashes(machine_, name) && files_.openInput(name) != nullptr;
  }

  Files& files_;
  Machine& machine_;
  const std::string& namesFile_;
  std::string folder_;  // of the first name
  SelectedFiles selected_;
};

void NamesReader::addLine(std::string_view line) {
  std::vector<std::string>& names = selected_.names;
  const bool isName = line.ends_with(recordEnd);
  std::string name(line);
  if (isName) {
    name = machine_.upperCase(line.substr(0, line.size() - recordEnd.size()));
    if (names.size() == mostNames) {  // the last name is replaced
      names.pop_back();
    }
    names.push_back(name);
  }
  if (names.empty()) {
    return;
  }
  if (isName && names.size() == 1) {
    folder_ = folderOf(machine_, name);
  }
  const std::string reason = reasonToStop(machine_, line, name, folder_);
  if (!reason.empty()) {
    fail(namesFile_, reason);
  } else if (isName && !canBeRead(name)) {
    fail(name, "cannot be read");
  }
}

SelectedFiles NamesReader::read() {
  const std::string text = readWhole(files_, namesFile_).value_or("");
  for (std::string_view line : linesOf(text)) {
    line = line.substr(0, line.find_last_not_of(' ') + 1);
    if (!listsNothing(line)) {
      addLine(line);
    }
  }
  if (selected_.names.empty()) {
    fail(namesFile_, "lists no page files");
  } else if (selected_.names.front().ends_with(reservedName)) {
    fail(selected_.names.front(), "has the name of a first result, which no first input can have");
  }
  return std::move(selected_);
}

}  // namespace

SelectedFiles selectedFilesOf(Files& files, Machine& machine, const std::string& namesFile) {
  return NamesReader(files, machine, namesFile).read();
}

}  // namespace kiv::proof
