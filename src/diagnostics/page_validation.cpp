#include "diagnostics/page_validation.h"

#include <algorithm>
#include <optional>
#include <set>

#include "analysis/page_checks.h"
#include "analysis/page_systems.h"
#include "analysis/report.h"
#include "analysis/verdict.h"
#include "diagnostics/page_problems.h"
#include "diagnostics/problem_codes.h"
#include "input/file_names.h"
#include "input/names_table.h"
#include "platform/line_reader.h"
#include "platform/memory/kept_host.h"

namespace kiv {
namespace {

/// Keeps the last message and shows none.
class TrialHost : public KeptHost {
 public:
  using KeptHost::KeptHost;

  Answer message(Icon /*icon*/, std::string_view text, Buttons buttons) override {
    last_ = text;
    return buttons == Buttons::ok ? Answer::ok : Answer::no;
  }
  void setPointer(Pointer /*pointer*/) override {}

  const std::string& last() const { return last_; }
  void forget() { last_.clear(); }

 private:
  std::string last_;
};

/// A line of the names file that stays in, and the name that it lists, if any.
struct NamesLine {
  std::string text;
  std::string name;
};

class Judge {
 public:
  explicit Judge(Host& world) : world_(world), host_(world) {}

  PageJudgement judge(const std::string& namesFile);

 private:
  void takeLine(const std::string& line);
  bool hasPageName(const std::string& name);
  void judgePage(const PageEntry& page);
  std::optional<std::string> failureOf(const PageEntry& page);
  std::string withoutDeletion(const std::string& message) const;

  Host& world_;
  TrialHost host_;
  std::vector<NamesLine> lines_;
  std::string firstGood_;
  std::set<std::string> bad_;  // the names of skipped pages
  PageJudgement judgement_;

  std::string musFileName_;
  ItemTable items_;
  MusReader reader_;
};

/// The names file stays here, whatever the message says.
std::string Judge::withoutDeletion(const std::string& message) const {
  constexpr std::string_view deleted = "\r\nNames file will be deleted after view.";
  return message.ends_with(deleted) ? message.substr(0, message.size() - deleted.size()) : message;
}

/// Loads the line behind the first good one, whose folder it must share.
void Judge::takeLine(const std::string& line) {
  const std::string trialFile = "KivSystemTrial.txt";
  if (host_.openOutput(trialFile)->write((firstGood_.empty() ? "" : firstGood_ + "\r\n") + line)) {
    return;
  }
  NamesTable names;
  host_.forget();
  LoadNamesTable(host_, trialFile, names);
  const std::string listed = names.nameList.size() > (firstGood_.empty() ? 0U : 1U) ? names.nameList.back() : "";
  if (names.nameCount == 0 && !host_.last().empty() && codeOf(host_.last()) != code::namesNotTerminated) {
    const std::string name = listed.empty() ? line : listed;
    judgement_.skipped.push_back({{name}, name, withoutDeletion(host_.last())});
  } else if (listed.empty()) {
    lines_.push_back({line, ""});
  } else if (hasPageName(listed)) {
    firstGood_ = firstGood_.empty() ? line : firstGood_;
    lines_.push_back({line, listed});
  }
}

bool Judge::hasPageName(const std::string& name) {
  NamesTable names;
  names.nameCount = 1;
  names.nameList = {name};
  PageTable pages;
  try {
    groupPages(host_, names, musFileName_, pages);
    return true;
  } catch (const ProgramEnd&) {
    judgement_.skipped.push_back({{name}, name, host_.last()});
    return false;
  }
}

std::optional<std::string> Judge::failureOf(const PageEntry& page) {
  try {
    FirstClefTable firstClefs;
    readPage(host_, page, page.pagePath, musFileName_, items_, firstClefs, reader_);
    std::int16_t systemBase = 0;
    const PageSystems systems = numberSystems(host_, musFileName_, items_, systemBase);
    checkPage(host_, musFileName_, items_, systems);
    Report(host_).writePage(items_);
    SystemTable table;
    phase5(host_, 0, table);
    return std::nullopt;
  } catch (const ProgramEnd&) {
    return host_.last();
  }
}

void Judge::judgePage(const PageEntry& page) {
  musFileName_.clear();
  const auto failure = failureOf(page);
  if (!failure) {
    ++judgement_.pages;
    return;
  }
  const std::vector<std::string> files = filesOf(host_, page, page.pagePath + withoutPath(page.pageName));
  bad_.insert(files.begin(), files.end());
  judgement_.skipped.push_back({files, musFileName_, *failure});
}

PageJudgement Judge::judge(const std::string& namesFile) {
  auto file = world_.openInput(namesFile);
  if (!file) {
    return judgement_;
  }
  LineReader lines(std::move(file));
  while (const auto line = lines.next()) {
    takeLine(std::string(*line));
  }
  NamesTable good;
  for (const NamesLine& line : lines_) {
    if (!line.name.empty() && good.nameList.size() < static_cast<std::size_t>(INT16_MAX)) {
      good.nameList.push_back(line.name);
      ++good.nameCount;
    }
  }
  PageTable pages;
  groupPages(host_, good, musFileName_, pages);
  int done = 0;
  for (const PageEntry& page : pages.pages) {
    world_.showProgress(done++, static_cast<int>(pages.pages.size()), "pages judged");
    judgePage(page);
  }
  world_.showProgress(done, done, "pages judged");
  for (const NamesLine& line : lines_) {
    if (!bad_.contains(line.name)) {
      judgement_.names += line.text + "\r\n";
    }
  }
  return std::move(judgement_);
}

}  // namespace

PageJudgement judgePages(Host& host, const std::string& namesFile) {
  return Judge(host).judge(namesFile);
}

}  // namespace kiv
