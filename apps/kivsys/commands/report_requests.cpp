#include "apps/kivsys/commands/report_requests.h"

#include <filesystem>
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
#include "platform/console/message_words.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/native_file.h"
#include "platform/temporary_folder.h"
#include "repair/corrections.h"
#include "repair/page_ids.h"
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

std::string labelOf(std::optional<float> oldId, std::int16_t newId) {
  return (oldId ? generalNumber(*oldId) : std::string()) + " \xE2\x86\x92 " + std::to_string(newId);
}

/// The ids of pages, each of which is read once.
class IdsOfPages {
 public:
  explicit IdsOfPages(Files& files) : files_(files) {}

  /// The id that a row of a table is about; nullopt when the page has none there.
  std::optional<float> idOf(const std::string& page, const repair::Correction& row) {
    const auto [known, isNew] = ids_.try_emplace(page);
    if (isNew) {
      const auto bytes = readWhole(files_, page, most_bytes::page);
      known->second = (bytes ? repair::idsOf(*bytes) : std::nullopt).value_or(std::vector<repair::PageId>());
    }
    const ItemType type = row.isCue ? ItemType::rest : ItemType::staff;
    for (const repair::PageId& id : known->second) {
      if (id.type == type && id.staff == row.staff && (row.item == 0 || id.item == row.item)) {
        return id.id;
      }
    }
    return std::nullopt;
  }

 private:
  Files& files_;
  std::map<std::string, std::vector<repair::PageId>> ids_;
};

report::ReportProposal proposalOf(const NamedCells& cells, const repair::Correction& row) {
  report::ReportProposal proposal;
  proposal.staff = row.staff;
  proposal.item = row.isCue ? row.item : 0;
  proposal.words = report::placeWords(printableUtf8(row.file), generalNumber(row.staff), proposal.item);
  proposal.label = labelOf(row.oldId, row.newId);
  proposal.confidence = printableUtf8(row.confidence);
  proposal.reason = printableUtf8(cells.cell(row.line, "reason"));
  proposal.csvLine = standardLine(cells, row);
  proposal.isAccepted = true;
  return proposal;
}

}  // namespace

std::optional<std::string> patternFor(NativeSystem& system, const std::vector<FoundFile>& pages) {
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
  return report::patternFor({names.begin(), names.end()}, others);
}

std::string shortArguments(ConsoleSystem& system, const Selection& selection) {
  constexpr std::size_t mostNamed = 4;
  const bool isListed = !selection.names.empty() || selection.pages.size() <= mostNamed;
  const auto pattern = isListed || selection.keepOrder ? std::nullopt : patternFor(system, system.pages());
  if (!pattern) {
    return selectionArguments(selection);
  }
  const std::string folder = folderOfPath(system, system.shownName(std::string(system.pageTable().name(0))));
  std::string plain = folder + *pattern;
  plain.erase(plain.rfind('*'), 1);
  return shellWord(plain) == plain ? " " + folder + *pattern : selectionArguments(selection);  // the shell expands it
}

std::string patternWord(const std::string& folder, const std::string& pattern) {
  constexpr bool isWindows = std::filesystem::path::preferred_separator == '\\';
  std::string plain = pattern;
  plain.erase(plain.rfind('*'), 1);
  if (shellWord(plain) != plain) {
    return "";
  }
  if (isWindows) {
    return fileWord(folder + pattern);
  }
  return (folder.empty() ? "" : fileWord(folder)) + pattern;
}

std::string shownCommand(const std::string& line) {
  return printable(line) == line ? NativeSystem::toUtf8(line) : "";
}

report::PageStep pageStep(const SkippedPage& page, const MessageFile& file) {
  return {NativeSystem::toUtf8(commandAfter(page.message, file)), mistakenWords(page.message, file)};
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
  IdsOfPages ids(system);
  for (const repair::Correction& row : corrections.rows) {
    table.proposals.push_back(proposalOf(cells, row));
    const auto name = names.find(nameOfPage(system, NativeSystem::fromUtf8(row.file)));
    table.proposals.back().file = name == names.end() ? "" : name->second;
    if (name == names.end()) {
      continue;
    }
    const std::optional<float> id = ids.idOf(name->second, row);
    if (id == static_cast<float>(row.newId)) {
      table.proposals.pop_back();  // there is nothing to accept
    } else if (!row.oldId) {
      table.proposals.back().label = labelOf(id, row.newId);
    }
  }
  return table;
}

std::string temporaryReport(NativeSystem& system) {
  const std::string folder = makeTemporaryFolder();
  return folder.empty() ? "" : system.fullName(folder + "/report.html");
}

}  // namespace kiv
