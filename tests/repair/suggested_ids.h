#pragma once

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "repair/gather_evidence.h"
#include "repair/suggestions.h"
#include "tests/diagnostics/run.h"

namespace kiv {

inline void PrintTo(const DoubtfulId& at, std::ostream* out) {
  *out << at.file << " staff " << at.staff << " item " << at.item << (at.isCue ? " cue " : " ") << nameOf(at.problem)
       << " " << at.oldId;
}

}  // namespace kiv

namespace kiv::test {

/// Suggestions for a group of pages with one system each.
class SuggestedIds : public ::testing::Test, public DiagnosedRun {
 protected:
  using Ids = std::vector<int>;

  /// A score of a flute, an oboe, a horn, a viola and a double bass has these clefs.
  static std::string clefOf(std::size_t staff) {
    static const Ids kinds = {0, 0, 0, 2, 1};
    return "kind " + std::to_string(kinds[staff % kinds.size()]);
  }
  /// A page whose staves have these ids, from the top down; more is added to it.
  void addSystem(const Ids& ids, const std::string& more = "") {
    std::string text;
    for (std::size_t i = 0; i < ids.size(); ++i) {
      const std::string n = std::to_string(ids.size() - i);
      text += "staff " + n + " at 10 lines 5 instrument " + std::to_string(ids[i]) + "\nclef " + n + " at 12 " +
              clefOf(i) + "\n";
    }
    text += "barline 1 at 10 spans " + std::to_string(ids.size()) + "\n";
    addPage("X" + std::to_string(++pages_) + ".MUS", text + more);
  }
  void addSystems(int count, const Ids& ids) {
    for (int system = 0; system < count; ++system) {
      addSystem(ids);
    }
  }
  const Suggestions& suggest(const ListedInstruments& listed = {}) {
    run(true);
    suggestions_ = suggestIds(gatherEvidence(host, *group), listed);
    return suggestions_;
  }
  /// "X5.MUS 3: 0 -> 103 sure" for each correction.
  std::vector<std::string> corrections(const ListedInstruments& listed = {}) {
    std::vector<std::string> lines;
    for (const Correction& c : suggest(listed).corrections) {
      lines.push_back(c.at.file.substr(5) + (c.at.isCue ? " cue " : " ") + c.at.staff + ": " +
                      std::to_string(c.at.oldId) + " -> " + std::to_string(c.newId) + " " + nameOf(c.confidence));
    }
    return lines;
  }

  static ListedInstruments listed(const Ids& ids) {
    ListedInstruments instruments;
    for (const int id : ids) {
      instruments.emplace_back().id = static_cast<std::int16_t>(id);
    }
    return instruments;
  }

  const Ids score = {101, 102, 103, 104, 105};

 private:
  int pages_ = 0;
  Suggestions suggestions_;
};

}  // namespace kiv::test
