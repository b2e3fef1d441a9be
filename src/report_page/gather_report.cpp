#include "report_page/gather_report.h"

#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <utility>

#include "analysis/report_index.h"
#include "diagnostics/group_facts.h"
#include "diagnostics/warnings.h"
#include "input/file_names.h"
#include "messages/codes.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "repair/gather_evidence.h"
#include "repair/suggestions.h"
#include "report_page/corrected_group.h"
#include "report_page/isolated.h"
#include "report_page/report_instruments.h"
#include "report_page/report_problems.h"
#include "report_page/report_proposals.h"
#include "report_page/report_verdict.h"
#include "report_page/result_check.h"
#include "report_page/result_faults.h"
#include "report_page/system_pictures.h"
#include "report_page/wanted_systems.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv::report {
namespace {

/// More than this, and a file opens slowly.
constexpr std::size_t mostPictureBytes = 2'000'000;

/// Keeps the messages, and lets another user see the progress.
class ProgressUser : public SilentUser {
 public:
  explicit ProgressUser(User& user) : user_(user) {}
  void showProgress(int done, int all, std::string_view plural) override { user_.showProgress(done, all, plural); }

 private:
  User& user_;
};

/// The warnings but those about what a problem is about already.
std::vector<Message> newWarnings(std::vector<Message> warnings, const std::vector<Message>& problems) {
  struct Same {
    std::string_view warning;
    std::string_view problem;
  };
  constexpr std::array<Same, 3> all = {{{code::repeatedInstrumentId, code::duplicateInstrumentId},
                                        {code::repeatedStaffNumber, code::duplicateStaffNumber},
                                        {code::severalZeroIds, code::zeroInstrumentId}}};
  for (const Same& same : all) {
    if (std::any_of(problems.begin(), problems.end(), [&](const Message& m) { return m.code == same.problem; })) {
      std::erase_if(warnings, [&](const Message& m) { return m.code == same.warning; });
    }
  }
  return warnings;
}

class ReportGatherer {
 public:
  ReportGatherer(const ReportHost& host, const ReportRequest& request, const CsvWriter& csv)
      : host_(host),
        request_(request),
        csv_(csv),
        files_(host.files, host.machine),
        correctedFiles_(host.files, host.machine),
        user_(host.user),
        program_({files_, user_, programs_, host.machine}),
        facts_({.instruments = true, .losses = LossScan::allItems}) {}

  GatheredReport gather();

 private:
  bool analyzePages();
  void addCounts();
  void addChart();
  void addProblems();
  void analyzeWithTable();
  void checkResults();
  const GroupFacts& convertedFacts() const { return haveCorrectedResults() ? corrected_->facts : facts_; }
  bool haveCorrectedResults() const { return gathered_.data.corrected && gathered_.data.corrected->haveResults; }
  void addMusicFaults(ProblemGrouper& grouper);
  void addPictures();
  std::string titleOf() const;

  const ReportHost& host_;
  const ReportRequest& request_;
  const CsvWriter& csv_;
  OverlayFiles files_;           // old results stay
  OverlayFiles correctedFiles_;  // with the pages as the reader's table makes them
  ProgressUser user_;
  NoPrograms programs_;
  KivSystem program_;
  GroupFacts facts_;
  std::optional<Layouts> layouts_;
  std::unique_ptr<const CorrectedGroup> corrected_;  // null without a table
  std::map<std::size_t, std::vector<WantedMark>> marks_;
  std::map<std::size_t, std::vector<ResultMark>> resultMarks_;
  GatheredReport gathered_;
};

/// Everything that may end the program. False when it did.
bool ReportGatherer::analyzePages() {
  ReportData& data = gathered_.data;
  const bool ended = exitCodeOfPart(user_, [&] {
                       ReportIndex index;
                       analyzeWithoutReport(program_, request_.namesFile, request_.allowZeroId, &facts_, &index);
                       data.chart = makeChart(host_.machine, index, request_.allowZeroId);
                       layouts_ = findLayouts(files_, program_.systems, facts_, Places::ofFirstSystems);
                     }).value_or(0) != 0;
  if (ended) {
    gathered_.ended = user_.messages().back();
  }
  return !ended;
}

std::string ReportGatherer::titleOf() const {
  const std::vector<std::string>& names = program_.names.nameList;
  const std::string prefix = names.empty() ? "" : extractPartName(host_.machine, names.front());
  return prefix.empty() ? "Pages" : host_.shown(withoutPath(host_.machine, prefix));
}

void ReportGatherer::addCounts() {
  ReportData& data = gathered_.data;
  const auto fileCount = static_cast<std::size_t>(std::max<std::int16_t>(program_.names.nameCount, 0));
  data.files = fileCount;
  data.pages = program_.pages.pages.size();
  data.severalFiles = static_cast<std::size_t>(std::max<std::int16_t>(program_.pages.multifileCount, 0));
  data.systems = data.chart.systems.size();
  data.instrumentCount = data.chart.instruments.size();
}

/// Names become what may be shown, and layouts words.
void ReportGatherer::addChart() {
  ReportData& data = gathered_.data;
  const std::vector<Instrument> instruments = facts_.instruments();
  for (const auto& [id, name] : shownNames(instruments)) {
    data.chart.names[id] = {isolated(host_.shown(name)), 0, ""};
  }
  for (ChartPage& page : data.chart.pages) {
    page.name = isolated(host_.shown(page.name));
  }
  if (layouts_) {
    addLayouts(*layouts_, data);
  }
  addInstruments(host_, instruments, data);
}

void ReportGatherer::addProblems() {
  ProblemGrouper grouper(host_, facts_);
  grouper.addSkipped(request_.skipped, request_.stepAfter);
  grouper.addProblems(findProblems(files_, user_.messages()), false);
  const std::vector<std::string>& names = program_.names.nameList;
  const std::vector<std::string> inputs(names.begin(), names.begin() + program_.names.nameCount);
  const bool converts = gathered_.data.deviating + gathered_.data.severalFiles > 0;
  const WarnedRun run{converts ? RunScope::conversion : RunScope::analysis, request_.allowZeroId};
  grouper.addProblems(findProblems(files_, newWarnings(findWarnings(files_, inputs, run, facts_), user_.messages())),
                      true);
  addMusicFaults(grouper);
  gathered_.data.problems = grouper.problems();
  marks_ = grouper.marks();
  if (request_.table) {
    gathered_.data.proposals = request_.table->proposals;
  } else {
    addProposals(host_, csv_, suggestIds(gatherEvidence(files_, facts_)), gathered_.data);
  }
  for (std::size_t p = 0; p < gathered_.data.proposals.size(); ++p) {
    ReportProposal& proposal = gathered_.data.proposals[p];
    const std::string file = host_.machine.upperCase(proposal.file);
    if (const auto system = grouper.systemOf(file, proposal.staff)) {
      proposal.system = static_cast<std::size_t>(facts_.systemNumber(*system));
      marks_[*system].push_back({file, proposal.staff, proposal.item, p, true});
    }
  }
}

/// Finds out what the reader's table makes of the group.
void ReportGatherer::analyzeWithTable() {
  if (!request_.table || request_.table->pages.empty()) {
    return;
  }
  for (const auto& [name, page] : request_.table->pages) {
    correctedFiles_.addFile(name, page);
  }
  corrected_ = analyzeCorrected(correctedFiles_, host_, request_);
  if (corrected_ && corrected_->facts.systemCount() == facts_.systemCount()) {
    gathered_.data.corrected = CorrectedPages{request_.table->name, corrected_->problems, !corrected_->qualifies};
  }
}

/// Finds out whether the results are those of the systems, corrected or as they are. Others are not shown: without
/// pages that were left out, for example, systems have other numbers.
void ReportGatherer::checkResults() {
  ReportData& data = gathered_.data;
  if (request_.firstResult.empty()) {
    return;
  }
  ResultMisfits found;
  if (data.corrected) {
    found = resultMisfits(host_, correctedFiles_, request_.firstResult, corrected_->facts);
    data.corrected->haveResults = found.sentences.empty();
  }
  if (!data.corrected || !data.corrected->haveResults) {
    ResultMisfits asTheyAre = resultMisfits(host_, files_, request_.firstResult, facts_);
    if (!data.corrected || asTheyAre.sentences.empty()) {
      found = std::move(asTheyAre);
    }
  }
  data.misfits = std::move(found.sentences);
  data.firstMissing = found.firstMissing;
  data.hasResults = data.misfits.empty();
}

/// Adds what does not fit the music in the results.
void ReportGatherer::addMusicFaults(ProblemGrouper& grouper) {
  if (!gathered_.data.hasResults) {
    return;
  }
  for (const MusicFault& fault : resultFaults(files_, request_.firstResult, convertedFacts())) {
    grouper.addResultWarning(fault.warning);
    for (const FaultPlace& place : fault.places) {
      resultMarks_[fault.result].push_back({place.staff, place.bar, grouper.indexOf(fault.warning.code)});
    }
  }
}

void ReportGatherer::addPictures() {
  WantedPictures wanted;
  wanted.marks = marks_;
  wanted.mostBytes = request_.allPictures ? SIZE_MAX : mostPictureBytes;
  wanted.resultMarks = resultMarks_;
  wanted.systems = wantedSystems(gathered_.data, wanted, request_.allPictures);
  if (gathered_.data.hasResults) {
    wanted.converted = &convertedFacts();
    wanted.result = [&](std::size_t number) { return resultName(request_.firstResult, number); };
  }
  PictureMaker maker(files_, host_.shown);
  gathered_.data.pictures = maker.draw(facts_, wanted);
}

GatheredReport ReportGatherer::gather() {
  ReportData& data = gathered_.data;
  data.skipped = request_.skipped.size();
  data.csvHead = csv_.head;
  if (request_.namesFile.empty()) {
    ProblemGrouper grouper(host_, facts_);
    grouper.addSkipped(request_.skipped, request_.stepAfter);
    data.problems = grouper.problems();
    data.title = "Pages";
  } else if (!analyzePages()) {
    return std::move(gathered_);
  } else {
    addCounts();
    addChart();
    analyzeWithTable();
    checkResults();
    addProblems();
    addPictures();
    data.title = titleOf();
  }
  gathered_.hasFindings = !data.problems.empty();
  addVerdict(request_, data);
  return std::move(gathered_);
}

}  // namespace

GatheredReport gatherReport(const ReportHost& host, const ReportRequest& request, const CsvWriter& csv) {
  const ReportHost isolating{host.files, host.machine, host.user, host.shown,
                             [&](const std::string& file) { return isolated(host.nameOf(file)); }};
  return ReportGatherer(isolating, request, csv).gather();
}

std::string resultName(const std::string& firstResult, std::size_t number) {
  constexpr std::size_t digits = 4;
  constexpr std::string_view suffix = ".MUS";
  const std::string text = std::to_string(number);
  const std::string zeros(digits - std::min(digits, text.size()), '0');
  const std::size_t stem = firstResult.size() - std::min(firstResult.size(), digits + suffix.size());
  return firstResult.substr(0, stem) + zeros + text + firstResult.substr(firstResult.size() - suffix.size());
}

}  // namespace kiv::report
