#include "diagnostics/page_validation.h"

#include <cstdint>
#include <optional>
#include <set>
#include <utility>

#include "analysis/page_checks.h"
#include "analysis/page_systems.h"
#include "analysis/report.h"
#include "analysis/verdict.h"
#include "input/file_names.h"
#include "input/names_table.h"
#include "messages/input_messages.h"
#include "platform/line_reader.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"

namespace kiv {
namespace {

/// The names file of a single line, in memory only.
constexpr const char* lineFile = "KivSystemLine.txt";

/// A line of the names file, and the name that it lists, if any.
struct NamesLine {
  std::string text;
  std::string name;
  bool isRefused = false;
};

std::string withoutTrailingBlanks(const std::string& line) {
  return line.substr(0, line.find_last_not_of(' ') + 1);
}

/// The message over which a procedure of the program ends it; nullopt when it returns. The end of the whole run is
/// passed on.
template <typename Procedure>
std::optional<Message> failureOf(Procedure run) {
  try {
    run();
    return std::nullopt;
  } catch (const ProgramEnd& end) {
    if (end.endsWholeRun()) {
      throw;
    }
    return end.message.value_or(Message{});
  }
}

class Validator {
 public:
  explicit Validator(const Host& host)
      : host_(host), files_(host.files, host.machine), reader_(files_, user_, host.machine) {}

  PageValidation validate(const std::string& namesFile);

 private:
  void addLine(const std::string& line);
  Message refusalOf(const std::string& line, const std::string& name, const Message& shown);
  bool hasPageName(const std::string& name);
  PageTable validPages();
  void validatePages();
  void validatePage(const PageEntry& page);
  void analyze(const PageEntry& page);
  void skip(std::vector<std::string> files, Message message);

  Host silentHost(User& user) { return {files_, user, programs_, host_.machine}; }

  const Host& host_;
  OverlayFiles files_;
  SilentUser user_;
  NoPrograms programs_;
  std::vector<NamesLine> lines_;
  std::string firstGoodLine_;
  std::set<std::string> badNames_;  // of skipped pages
  PageValidation validation_;

  ItemTable items_;
  PageReader reader_;
};

void Validator::skip(std::vector<std::string> files, Message message) {
  validation_.skipped.push_back({std::move(files), asCritical(std::move(message))});
}

/// The message that a line of the names file is refused with. No file is deleted over it here.
Message Validator::refusalOf(const std::string& line, const std::string& name, const Message& shown) {
  using messages::RefusedNames;
  Message refusal = shown;
  if (shown.code == code::namesNoFolder) {
    refusal = messages::recordWithoutFolder(name.empty() ? withoutTrailingBlanks(line) : name, lineFile,
                                            RefusedNames::areKept);
  } else if (shown.code == code::namesFoldersDiffer) {
    refusal = messages::foldersDiffer(lineFile, RefusedNames::areKept);
  } else if (shown.code == code::namesFileMissing && files_.find(lineFile) == nullptr) {
    refusal = messages::fileMissing(name, RefusedNames::areKept);
  }
  refusal.location.file = name.empty() ? line : name;
  return refusal;
}

/// Loads the line after the first good one, whose folder it must share.
void Validator::addLine(const std::string& line) {
  files_.addFile(lineFile, (firstGoodLine_.empty() ? "" : firstGoodLine_ + "\r\n") + line);
  NamesTable names;
  SilentUser user;
  LoadNamesTable(silentHost(user), lineFile, names);
  const std::string name = names.nameList.size() > (firstGoodLine_.empty() ? 0U : 1U) ? names.nameList.back() : "";
  const bool refused =
      names.nameCount == 0 && !user.messages().empty() && user.messages().back().code != code::namesNotTerminated;
  if (refused) {
    skip({name.empty() ? line : name}, refusalOf(line, name, user.messages().back()));
    lines_.push_back({line, name, true});
  } else if (name.empty()) {
    lines_.push_back({line, ""});
  } else if (hasPageName(name)) {
    firstGoodLine_ = firstGoodLine_.empty() ? line : firstGoodLine_;
    lines_.push_back({line, name});
  } else {
    lines_.push_back({line, name, true});
  }
}

bool Validator::hasPageName(const std::string& name) {
  NamesTable names;
  names.nameCount = 1;
  names.nameList = {name};
  auto failure = failureOf([&] { groupPages(silentHost(user_), names); });
  if (!failure) {
    return true;
  }
  skip({name}, std::move(*failure));
  return false;
}

void Validator::analyze(const PageEntry& page) {
  FirstClefTable firstClefs;
  reader_.read(page, page.pagePath, items_, firstClefs);
  std::int16_t systemBase = 0;
  const TableRows rows(items_);
  const PageSystems systems = numberSystems(items_, rows.staves, systemBase);
  checkPage(items_, rows, systems);
  Report(files_, host_.machine).writePage(items_, rows);
  SystemTable table;
  phase5(files_, 0, table);
}

void Validator::validatePage(const PageEntry& page) {
  auto failure = failureOf([&] { analyze(page); });
  if (!failure) {
    ++validation_.pages;
    return;
  }
  std::vector<std::string> files = filesOf(host_.machine, page);
  badNames_.insert(files.begin(), files.end());
  skip(std::move(files), std::move(*failure));
}

PageTable Validator::validPages() {
  NamesTable good;
  for (const NamesLine& line : lines_) {
    if (!line.isRefused && !line.name.empty() && good.nameList.size() < static_cast<std::size_t>(INT16_MAX)) {
      good.nameList.push_back(line.name);
      ++good.nameCount;
    }
  }
  return groupPages(silentHost(user_), good);
}

void Validator::validatePages() {
  const PageTable pages = validPages();
  const int all = static_cast<int>(pages.pages.size());
  int done = 0;
  for (const PageEntry& page : pages.pages) {
    host_.user.showProgress(done++, all, "pages judged");
    validatePage(page);
  }
  host_.user.showProgress(all, all, "pages judged");
}

PageValidation Validator::validate(const std::string& namesFile) {
  auto file = host_.files.openInput(namesFile);
  if (!file) {
    return validation_;
  }
  LineReader lines(std::move(file));
  while (const auto line = lines.next()) {
    addLine(std::string(*line));
  }
  validatePages();
  std::size_t skipped = 0;
  for (const NamesLine& line : lines_) {
    if (line.isRefused || badNames_.contains(line.name)) {
      ++skipped;
      continue;
    }
    validation_.names += line.text + "\r\n";
    if (!line.name.empty()) {
      validation_.skippedBefore.try_emplace(line.name, skipped);
    }
  }
  return std::move(validation_);
}

}  // namespace

std::string SkippedPage::namedFile() const {
  return message.location.file.empty() ? files.front() : message.location.file;
}

std::vector<std::string> SkippedPage::otherFiles() const {
  const std::string named = namedFile();
  std::vector<std::string> others;
  std::copy_if(files.begin(), files.end(), std::back_inserter(others),
               [&](const std::string& file) { return file != named; });
  return others;
}

PageValidation validatePages(const Host& host, const std::string& namesFile) {
  return Validator(host).validate(namesFile);
}

}  // namespace kiv
