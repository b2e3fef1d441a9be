#include "apps/kivsys/commands/report_requests.h"

#include <map>
#include <set>
#include <utility>

#include "apps/kivsys/commands/fix_requests.h"
#include "apps/kivsys/output/next_step.h"
#include "base/csv.h"
#include "base/csv_line.h"
#include "base/number.h"
#include "input/file_names.h"
#include "platform/bounded_file.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/native_file.h"
#include "platform/temporary_folder.h"
#include "repair/corrections.h"
#include "report_page/page_pattern.h"
#include "report_page/report_problems.h"
#include "survey/survey.h"

namespace kiv {
namespace {

constexpr std::size_t mostTableBytes = most_bytes::corrections;

/// The cells of a table by the heads of its columns, row by row.
class NamedCells {
 public:
  explicit NamedCells(std::string_view text) {
    CsvReader reader(text);
    if (const auto heads = reader.next()) {
      for (std::size_t c = 0; c < heads->cells.size(); ++c) {
        columns_.emplace(heads->cells[c], c);
      }
    }
    while (auto row = reader.next()) {
      const std::size_t line = row->line;
      rows_.emplace(line, std::move(row->cells));
    }
  }

  std::string cell(std::size_t line, const std::string& head) const {
    const auto column = columns_.find(head);
    const auto row = rows_.find(line);
    const bool isThere = column != columns_.end() && row != rows_.end() && column->second < row->second.size();
    return isThere ? row->second[column->second] : std::string();
  }

 private:
  std::map<std::string, std::size_t> columns_;
  std::map<std::size_t, std::vector<std::string>> rows_;
};

/// The row as `kivsys suggest` writes it.
std::string standardLine(const NamedCells& cells, const repair::Correction& row) {
  std::vector<std::string> line;
  for (const char* head : {"file", "system", "staff", "item", "what", "problem", "old_id", "new_id", "confidence"}) {
    line.push_back(cells.cell(row.line, head));
  }
  line.front() = cellText(line.front());
  line.push_back(cellText(cells.cell(row.line, "reason")));
  return csvLine(line);
}

report::ReportProposal proposalOf(const NamedCells& cells, const repair::Correction& row) {
  report::ReportProposal proposal;
  proposal.staff = row.staff;
  proposal.item = row.isCue ? row.item : 0;
  proposal.words = report::placeWords(printableUtf8(row.file), generalNumber(row.staff), proposal.item);
  const std::string oldId = row.oldId ? generalNumber(*row.oldId) : "";
  proposal.label = oldId + " \xE2\x86\x92 " + std::to_string(row.newId);
  proposal.confidence = printableUtf8(row.confidence);
  proposal.reason = printableUtf8(cells.cell(row.line, "reason"));
  proposal.csvLine = standardLine(cells, row);
  proposal.isAccepted = true;
  return proposal;
}

/// A pattern for the pages, where there is one that the shell leaves as it is.
std::optional<std::string> patternFor(ConsoleSystem& system, const std::vector<FoundFile>& pages) {
  const std::string folder = folderOfPath(system, pages.front().path);
  std::set<std::string> names;
  for (const FoundFile& page : pages) {
    if (folderOfPath(system, page.path) != folder) {
      return std::nullopt;
    }
    names.insert(page.path.substr(folder.size()));
  }
  std::vector<std::string> others;
  for (const FolderEntry& entry : system.listFolder(justPath(system, pages.front().name))) {
    others.push_back(entry.name);
  }
  const auto pattern = report::patternFor({names.begin(), names.end()}, others);
  if (!pattern) {
    return std::nullopt;
  }
  std::string plain = folder + *pattern;
  plain.erase(plain.rfind('*'), 1);
  const std::string shownFolder = folderOfPath(system, system.shownName(pages.front().name));
  return shellWord(plain) == plain ? std::optional(shownFolder + *pattern) : std::nullopt;
}

}  // namespace

std::string shortArguments(ConsoleSystem& system, const Selection& selection) {
  constexpr std::size_t mostNamed = 4;
  const bool isListed = !selection.names.empty() || selection.pages.size() <= mostNamed;
  const auto pattern = isListed || selection.keepOrder ? std::nullopt : patternFor(system, system.pages());
  return pattern ? " " + *pattern : selectionArguments(selection);
}

TableProposals readProposals(ConsoleSystem& system, const std::string& file) {
  if (file.empty()) {
    return {};
  }
  TableProposals table;
  const std::string path = system.diskName(file);
  const BoundedContent content = readBounded(system, file, mostTableBytes);
  if (!content.bytes) {
    table.errors.push_back(content.isTooLarge ? path + " " + tooLarge(mostTableBytes, "a table of corrections")
                                              : "cannot read " + path + ": " + readFailure(path).value_or("I/O error"));
    return table;
  }
  const repair::Corrections corrections = repair::readCorrections(*content.bytes);
  for (const repair::CorrectionError& error : corrections.errors) {
    table.errors.push_back(path + ":" + std::to_string(error.line) + ": " + NativeSystem::fromUtf8(error.reason));
  }
  std::map<std::string, std::string> names;  // of the core, by how tables name pages
  for (const FoundFile& page : system.pages()) {
    names.emplace(nameOfPage(system, page.name), page.name);
  }
  const NamedCells cells(*content.bytes);
  for (const repair::Correction& row : corrections.rows) {
    table.proposals.push_back(proposalOf(cells, row));
    const auto name = names.find(nameOfPage(system, NativeSystem::fromUtf8(row.file)));
    table.proposals.back().file = name == names.end() ? "" : name->second;
  }
  return table;
}

std::string temporaryReport(NativeSystem& system) {
  const std::string folder = makeTemporaryFolder();
  return folder.empty() ? "" : system.fullName(folder + "/report.html");
}

}  // namespace kiv
