#include "repair/gather_evidence.h"

#include <cmath>
#include <map>
#include <set>
#include <string>

#include "mus/format.h"
#include "platform/file_buffer.h"
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

class EvidenceGatherer {
 public:
  explicit EvidenceGatherer(Files& files) : files_(files) {}

  GroupEvidence gather(const GroupFacts& facts);

 private:
  const ReadPage& page(const std::string& file);
  void addStaff(const StaffFact& fact);
  void forgetOthers(const SystemFact& system);

  Files& files_;
  FileBuffer buffer_;
  std::map<std::string, ReadPage> pages_;  // those of the system that is added
  GroupEvidence group_;
};

const ReadPage& EvidenceGatherer::page(const std::string& file) {
  const auto known = pages_.find(file);
  if (known != pages_.end()) {
    return known->second;
  }
  const std::string_view bytes = buffer_.read(files_, file, readableBytes).value_or("");
  return pages_.emplace(file, ReadPage{describeStaves(bytes), findSigns(bytes)}).first->second;
}

void EvidenceGatherer::addStaff(const StaffFact& fact) {
  StaffEvidence evidence;
  evidence.file = fact.file;
  evidence.staff = fact.staff;
  evidence.id = fact.instrument;
  const ReadPage& read = page(fact.file);
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

/// A page has all its systems next to each other.
void EvidenceGatherer::forgetOthers(const SystemFact& system) {
  const std::set<std::string> needed = filesOf(system);
  std::erase_if(pages_, [&](const auto& page) { return !needed.contains(page.first); });
}

GroupEvidence EvidenceGatherer::gather(const GroupFacts& facts) {
  for (std::size_t s = 0; s < facts.systemCount(); ++s) {
    const SystemFact system = facts.system(s);
    forgetOthers(system);
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
