#include "repair/group_evidence.h"

#include <map>
#include <set>
#include <unordered_map>
#include <utility>

#include "mus/format.h"
#include "platform/file_buffer.h"
#include "repair/staff_signs.h"

namespace kiv {
namespace {

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
  StaffEvidence describe(const StaffFact& fact);
  SharedText shared(const std::string& text);
  void forgetOthers(const SystemFact& system);

  Files& files_;
  FileBuffer buffer_;
  SharedText lastFile_;                                // its staves mostly follow each other
  std::unordered_map<std::string, SharedText> texts_;  // numbers and names of staves
  std::map<std::string, ReadPage> pages_;              // those of the system that is added
};

const ReadPage& EvidenceGatherer::page(const std::string& file) {
  const auto known = pages_.find(file);
  if (known != pages_.end()) {
    return known->second;
  }
  const std::string_view bytes = buffer_.read(files_, file, readableBytes).value_or("");
  return pages_.emplace(file, ReadPage{describeStaves(bytes), findSigns(bytes)}).first->second;
}

SharedText EvidenceGatherer::shared(const std::string& text) {
  return text.empty() ? SharedText() : texts_.try_emplace(text, text).first->second;
}

StaffEvidence EvidenceGatherer::describe(const StaffFact& fact) {
  StaffEvidence evidence;
  if (fact.file != lastFile_.text()) {
    lastFile_ = SharedText(fact.file);
  }
  evidence.file = lastFile_;
  evidence.staff = shared(fact.staff);
  evidence.id = fact.instrument;
  const ReadPage& read = page(fact.file);
  const DescribedStaff* staff = findListed(read.staves, fact);
  if (staff == nullptr) {
    return evidence;
  }
  evidence.item = staff->place.item;
  evidence.name = shared(staff->beside);
  evidence.lines = staff->lines;
  evidence.size = staff->size;
  if (!staff->clefs.empty()) {
    evidence.clef = staff->clefs.front();
  }
  if (!staff->keys.empty()) {
    evidence.key = staff->keys.front();
  }
  const auto signs = read.signs.find(staff->number);
  if (signs != read.signs.end()) {
    evidence.brace = signs->second.brace;
    evidence.noteHeight = signs->second.noteHeight;
    evidence.shownNumber = signs->second.shownNumber;
    evidence.cues = signs->second.cues;
  }
  return evidence;
}

/// A page has all its systems next to each other.
void EvidenceGatherer::forgetOthers(const SystemFact& system) {
  const std::set<std::string> needed = filesOf(system);
  std::erase_if(pages_, [&](const auto& page) { return !needed.contains(page.first); });
}

GroupEvidence EvidenceGatherer::gather(const GroupFacts& facts) {
  GroupEvidence group;
  group.reserve(facts.systemCount());
  for (std::size_t s = 0; s < facts.systemCount(); ++s) {
    const SystemFact system = facts.system(s);
    forgetOthers(system);
    SystemEvidence& evidence = group.emplace_back();
    evidence.number = system.number;
    evidence.staves.reserve(system.staves.size());
    for (const StaffFact& fact : system.staves) {
      evidence.staves.push_back(describe(fact));
    }
  }
  return group;
}

}  // namespace

GroupEvidence gatherEvidence(Files& files, const GroupFacts& facts) {
  return EvidenceGatherer(files).gather(facts);
}

}  // namespace kiv
