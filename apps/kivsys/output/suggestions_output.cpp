#include "apps/kivsys/output/suggestions_output.h"

#include <array>
#include <set>
#include <vector>

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/diagnostics_json.h"
#include "apps/kivsys/output/text_table.h"
#include "base/number.h"
#include "input/file_names.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

using Row = std::vector<std::string>;

constexpr std::size_t itemColumn = 3;

std::string whatOf(const DoubtfulId& at) {
  return at.isCue ? "cue" : "staff";
}

Json placeJson(const DoubtfulId& at, const SelectedNames& names) {
  const auto staff = strictNumber(at.staff);
  return {{"file", NativeSystem::toUtf8(names.of(at.file))},
          {"system", at.system},
          {"staff", staff ? numberJson(*staff) : Json()},
          {"item", at.item == 0 ? Json() : Json(at.item)},
          {"what", whatOf(at)},
          {"problem", nameOf(at.problem)},
          {"old_id", at.oldId}};
}

std::string candidateCell(const Undecided& undecided) {
  std::string cell;
  for (const std::int16_t id : undecided.candidates) {
    cell += (cell.empty() ? "" : ", ") + std::to_string(id);
  }
  return cell;
}

std::string countLine(const Suggestions& suggestions) {
  std::array<std::size_t, 3> counts{};
  for (const Correction& correction : suggestions.corrections) {
    ++counts.at(static_cast<std::size_t>(correction.confidence));
  }
  std::string line = "Corrections: " + std::to_string(suggestions.corrections.size());
  std::string parts;
  for (const Confidence confidence : {Confidence::sure, Confidence::likely, Confidence::guess}) {
    const std::size_t count = counts.at(static_cast<std::size_t>(confidence));
    if (count > 0) {
      parts += (parts.empty() ? "" : ", ") + std::to_string(count) + " " + nameOf(confidence);
    }
  }
  return line + (parts.empty() ? "" : " (" + parts + ")") +
         "\nUndecided: " + std::to_string(suggestions.undecided.size()) + "\n";
}

/// The rows with what can be printed, and a dash for an empty cell.
std::string asTable(std::vector<Row> rows) {
  for (Row& row : rows) {
    for (std::string& cell : row) {
      cell = cell.empty() ? "-" : printable(cell);
    }
  }
  return tableText(rows, {1, 2, itemColumn});
}

}  // namespace

SelectedNames::SelectedNames(ConsoleSystem& system) : system_(system) {
  std::map<std::string, std::size_t> uses;
  const auto withoutFolder = [&](const std::string& path) { return path.substr(folderOfPath(system, path).size()); };
  const std::vector<FoundFile> pages = system.pages();
  for (const FoundFile& page : pages) {
    ++uses[withoutFolder(page.path)];
  }
  for (const FoundFile& page : pages) {
    const std::string name = withoutFolder(page.path);
    names_[system.upperCase(page.name)] = uses[name] > 1 ? page.path : name;
  }
}

std::string SelectedNames::of(const std::string& coreName) const {
  const auto name = names_.find(system_.upperCase(coreName));
  return name == names_.end() ? withoutPath(system_, coreName) : name->second;
}

std::string correctionLine(const Correction& correction, const std::string& name) {
  return correctionLine(correction, NativeSystem::toUtf8(name), NativeSystem::toUtf8(correction.reason));
}

std::string correctionsCsv(const Suggestions& suggestions, const SelectedNames& names) {
  std::string text = std::string(correctionHeads) + "\n";
  for (const Correction& correction : suggestions.corrections) {
    text += correctionLine(correction, names.of(correction.at.file));
  }
  return text;
}

std::string suggestionTables(const Suggestions& suggestions, const SelectedNames& names) {
  std::string text = countLine(suggestions);
  const Row heads = {"file", "system", "staff", "item", "what", "problem", "old id"};
  if (!suggestions.corrections.empty()) {
    std::vector<Row> rows = {heads};
    rows.front().insert(rows.front().end(), {"new id", "confidence", "reason"});
    for (const Correction& correction : suggestions.corrections) {
      rows.push_back(placeCells(correction.at, names.of(correction.at.file)));
      rows.back().insert(rows.back().end(),
                         {std::to_string(correction.newId), nameOf(correction.confidence), correction.reason});
    }
    text += "\n" + asTable(rows);
  }
  if (!suggestions.undecided.empty()) {
    std::vector<Row> rows = {heads};
    rows.front().insert(rows.front().end(), {"candidates", "reason"});
    for (const Undecided& undecided : suggestions.undecided) {
      rows.push_back(placeCells(undecided.at, names.of(undecided.at.file)));
      rows.back().insert(rows.back().end(), {candidateCell(undecided), undecided.reason});
    }
    text += "\nNot decided:\n" + asTable(rows);
  }
  return text;
}

Json correctionsJson(const Suggestions& suggestions, const SelectedNames& names) {
  Json all = Json::array();
  for (const Correction& correction : suggestions.corrections) {
    Json object = placeJson(correction.at, names);
    object["new_id"] = correction.newId;
    object["confidence"] = nameOf(correction.confidence);
    object["reason"] = NativeSystem::toUtf8(correction.reason);
    all.push_back(object);
  }
  return all;
}

Json undecidedJson(const Suggestions& suggestions, const SelectedNames& names) {
  Json all = Json::array();
  for (const Undecided& undecided : suggestions.undecided) {
    Json object = placeJson(undecided.at, names);
    object["candidates"] = undecided.candidates;
    object["reason"] = NativeSystem::toUtf8(undecided.reason);
    all.push_back(object);
  }
  return all;
}

}  // namespace kiv
