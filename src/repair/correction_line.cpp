#include "repair/correction_line.h"

#include "base/csv_line.h"

namespace kiv {

std::vector<std::string> placeCells(const DoubtfulId& at, const std::string& file) {
  return {file,
          std::to_string(at.system),
          at.staff,
          at.item == 0 ? "" : std::to_string(at.item),
          at.isCue ? "cue" : "staff",
          nameOf(at.problem),
          std::to_string(at.oldId)};
}

std::string correctionLine(const Correction& correction, const std::string& file, const std::string& reason) {
  std::vector<std::string> row = placeCells(correction.at, cellText(file));
  row.insert(row.end(), {std::to_string(correction.newId), nameOf(correction.confidence), cellText(reason)});
  return csvLine(row);
}

}  // namespace kiv
