#include "repair/gather_evidence.h"

#include <cmath>
#include <map>
#include <string_view>

#include "diagnostics/recent_pages.h"
#include "repair/staff_signs.h"

namespace kiv {
namespace {

/// Average heights this many staff steps apart are of different ranges.
constexpr float rangeStep = 3;

/// A page file whose staves are described.
struct ReadPage {
  std::vector<DescribedStaff> staves;
  std::map<float, StaffSigns> signs;
};

ReadPage readPage(std::string_view bytes) {
  return {describeStaves(bytes), findSigns(bytes)};
}

class EvidenceGatherer {
 public:
  explicit EvidenceGatherer(Files& files) : pages_(files, readPage) {}

  GroupEvidence gather(const GroupFacts& facts);

 private:
  void addStaff(const StaffFact& fact);

  RecentPages<ReadPage> pages_;
  GroupEvidence group_;
};

void EvidenceGatherer::addStaff(const StaffFact& fact) {
  StaffEvidence evidence;
  evidence.file = fact.file;
  evidence.staff = fact.staff;
  evidence.id = fact.instrument;
  const ReadPage& read = pages_.page(fact.file);
  const DescribedStaff* staff = findListed(read.staves, fact);
  if (staff == nullptr) {
    group_.addStaff(evidence, {});
    return;
  }
  evidence.item = staff->place.item;
  evidence.name = staff->beside;
  evidence.lines = staff->lines;
  evidence.size = staff->size;
  if (!staff->clefs.empty()) {
    evidence.clef = staff->clefs.front();
  }
  if (!staff->keys.empty()) {
    evidence.key = staff->keys.front();
  }
  static const StaffSigns none;
  const auto found = read.signs.find(staff->number);
  const StaffSigns& signs = found == read.signs.end() ? none : found->second;
  evidence.brace = signs.brace;
  evidence.shownNumber = signs.shownNumber;
  if (signs.noteHeight) {
    evidence.noteRange = std::floor(*signs.noteHeight / rangeStep);
  }
  group_.addStaff(evidence, signs.cues);
}

GroupEvidence EvidenceGatherer::gather(const GroupFacts& facts) {
  for (std::size_t s = 0; s < facts.systemCount(); ++s) {
    const SystemFact system = facts.system(s);
    pages_.keepOnlyFilesOf(system);
    group_.addSystem(system.number);
    for (const StaffFact& fact : system.staves) {
      addStaff(fact);
    }
  }
  return std::move(group_);
}

}  // namespace

GroupEvidence gatherEvidence(Files& files, const GroupFacts& facts) {
  return EvidenceGatherer(files).gather(facts);
}

}  // namespace kiv
