#include "repair/group_evidence.h"

#include <algorithm>
#include <bit>
#include <set>

#include "base/number_hash.h"

namespace kiv {

void GroupEvidence::addSystem(std::int16_t number) {
  systems_.push_back({number, static_cast<std::uint32_t>(staves_.size()), 0});
}

void GroupEvidence::addStaff(const StaffEvidence& staff, std::span<const CueEvidence> cues) {
  System& system = systems_.back();
  const std::uint32_t file = files_.add(staff.file);
  const auto number = static_cast<std::uint32_t>(staves_.size());
  if (number == system.firstStaff) {
    system.file = file;
  }
  if (!cues.empty()) {
    cuedStaves_.push_back({number, static_cast<std::uint32_t>(cues_.size())});
    cues_.insert(cues_.end(), cues.begin(), cues.end());
  }
  staves_.push_back({numberOf(lookOf(staff, file - system.file)), staff.item});
}

GroupEvidence::Look GroupEvidence::lookOf(const StaffEvidence& staff, std::uint32_t fileStep) {
  Look look{fileStep, texts_.add(staff.staff), texts_.add(staff.name), staff.id, 0, {}};
  std::size_t v = 0;
  for (const std::optional<float>& value : valuesOf(staff)) {
    if (value) {
      look.known = static_cast<std::uint16_t>(look.known | 1U << v);
      look.values[v] = std::bit_cast<std::uint32_t>(*value);
    }
    ++v;
  }
  return look;
}

std::array<std::optional<float>, GroupEvidence::valueCount> GroupEvidence::valuesOf(const StaffEvidence& staff) {
  const auto kind = staff.clef ? std::optional(staff.clef->kind) : std::nullopt;
  const auto height = staff.clef ? std::optional(staff.clef->height) : std::nullopt;
  return {kind, height, staff.lines, staff.size, staff.key, staff.brace, staff.noteRange, staff.shownNumber};
}

std::size_t GroupEvidence::hashOf(const Look& look) {
  NumberHash hash;
  hash.add(look.fileStep).add(look.staff).add(look.name).add(look.id).add(look.known);
  return hash.addAll(look.values).value();
}

std::uint32_t GroupEvidence::numberOf(const Look& look) {
  return lookIndex_.findOrAdd(
      hashOf(look), [&](std::uint32_t known) { return looks_[known] == look; },
      [this](std::uint32_t known) { return hashOf(looks_[known]); }, [&] { looks_.push_back(look); });
}

std::size_t GroupEvidence::staffCount(std::size_t system) const {
  const std::size_t end = system + 1 < systems_.size() ? systems_[system + 1].firstStaff : staves_.size();
  return end - systems_[system].firstStaff;
}

StaffEvidence GroupEvidence::staff(std::size_t system, std::size_t staff) const {
  const System& of = systems_[system];
  const Staff& one = staves_[of.firstStaff + staff];
  const Look& look = looks_[one.look];
  const auto value = [&](std::size_t v) {
    return (look.known >> v & 1U) != 0 ? std::optional(std::bit_cast<float>(look.values[v])) : std::nullopt;
  };
  StaffEvidence evidence;
  evidence.file = files_[of.file + look.fileStep];
  evidence.staff = texts_[look.staff];
  evidence.item = one.item;
  evidence.id = look.id;
  evidence.name = texts_[look.name];
  std::size_t v = 0;
  if (const auto kind = value(v++), height = value(v++); kind && height) {
    evidence.clef = {*kind, *height};
  }
  for (std::optional<float>* const plain :
       {&evidence.lines, &evidence.size, &evidence.key, &evidence.brace, &evidence.noteRange, &evidence.shownNumber}) {
    *plain = value(v++);
  }
  return evidence;
}

std::span<const CueEvidence> GroupEvidence::cues(std::size_t system, std::size_t staff) const {
  const auto number = static_cast<std::uint32_t>(systems_[system].firstStaff + staff);
  const auto found = std::ranges::lower_bound(cuedStaves_, number, {}, &CuedStaff::staff);
  if (found == cuedStaves_.end() || found->staff != number) {
    return {};
  }
  const std::size_t end = found + 1 == cuedStaves_.end() ? cues_.size() : (found + 1)->firstCue;
  return std::span(cues_).subspan(found->firstCue, end - found->firstCue);
}

}  // namespace kiv
