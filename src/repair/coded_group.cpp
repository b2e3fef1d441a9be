#include "repair/coded_group.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "base/number.h"
#include "base/number_hash.h"
#include "diagnostics/instrument_names.h"

namespace kiv {
namespace {

/// Names that are compared with each other; further ones say nothing.
constexpr std::size_t mostNames = 400;
/// How far a short form says the same as the name: it may be short for another one, too.
constexpr double shortForm = 0.6;

using Value = std::pair<float, float>;

std::size_t hashOf(const CodedStaff& staff) {
  return NumberHash().add(staff.id).add(staff.shownNumber).add(staff.name).addAll(staff.features).value();
}

class Encoder {
 public:
  CodedGroup encode(const GroupEvidence& group);

 private:
  int code(Feature feature, const std::optional<Value>& value);
  int nameCode(std::string_view name);
  CodedStaff encodeStaff(const StaffEvidence& staff, std::optional<float> keyOfSystem);
  void addSystem(const GroupEvidence& group, std::size_t system);
  void compareNames();

  CodedGroup group_;
  std::array<std::map<Value, int>, featureCount> codes_;
  std::array<std::vector<int>, featureCount> counts_;
  std::map<std::string, int, std::less<>> nameCodes_;
};

std::optional<Value> single(const std::optional<float>& value) {
  return value ? std::optional<Value>({*value, 0}) : std::nullopt;
}

/// The commonest key; of equally common ones the lowest.
std::optional<float> keyOf(const std::vector<StaffEvidence>& system) {
  std::map<float, int> counts;
  for (const StaffEvidence& staff : system) {
    if (staff.key && !std::isnan(*staff.key)) {
      ++counts[*staff.key];
    }
  }
  const auto best =
      std::max_element(counts.begin(), counts.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return best == counts.end() ? std::nullopt : std::optional<float>(best->first);
}

int Encoder::code(Feature feature, const std::optional<Value>& value) {
  if (!value || std::isnan(value->first) || std::isnan(value->second)) {
    return unknownCode;
  }
  const auto f = static_cast<std::size_t>(feature);
  const auto [found, isNew] = codes_[f].emplace(*value, static_cast<int>(codes_[f].size()));
  if (isNew) {
    counts_[f].push_back(0);
  }
  ++counts_[f][static_cast<std::size_t>(found->second)];
  return found->second;
}

int Encoder::nameCode(std::string_view name) {
  if (name.empty() || (nameCodes_.size() >= mostNames && !nameCodes_.contains(name))) {
    return unknownCode;
  }
  const auto [found, isNew] = nameCodes_.emplace(std::string(name), static_cast<int>(nameCodes_.size()));
  if (isNew) {
    group_.names.emplace_back(name);
  }
  return found->second;
}

CodedStaff Encoder::encodeStaff(const StaffEvidence& staff, std::optional<float> keyOfSystem) {
  std::optional<float> distance;
  std::optional<Value> clef;
  if (staff.key && keyOfSystem) {
    distance = *staff.key - *keyOfSystem;
  }
  if (staff.clef) {
    clef = {staff.clef->kind, staff.clef->height};
  }
  CodedStaff coded;
  coded.id = staff.id;
  coded.name = nameCode(staff.name);
  coded.shownNumber = staff.shownNumber ? toInt16(*staff.shownNumber).value_or(0) : std::int16_t{0};
  // A staff without a brace says something, too.
  coded.features = {code(Feature::clef, clef),
                    code(Feature::lines, single(staff.lines)),
                    code(Feature::size, single(staff.size)),
                    code(Feature::keyDistance, single(distance)),
                    code(Feature::key, single(staff.key)),
                    code(Feature::brace, Value{staff.brace.value_or(0), staff.brace ? 1.0F : 0.0F}),
                    code(Feature::range, single(staff.noteRange))};
  return coded;
}

void Encoder::addSystem(const GroupEvidence& group, std::size_t system) {
  std::vector<StaffEvidence> staves;
  for (std::size_t i = 0; i < group.staffCount(system); ++i) {
    staves.push_back(group.staff(system, i));
  }
  const auto key = keyOf(staves);
  std::map<std::int16_t, int> counts;
  std::vector<CodedStaff> coded;
  coded.reserve(staves.size());
  for (const StaffEvidence& staff : staves) {
    coded.push_back(encodeStaff(staff, key));
    ++counts[staff.id];
  }
  for (CodedStaff& staff : coded) {
    staff.repeated = staff.id != 0 && counts[staff.id] > 1;
  }
  for (const auto& [id, count] : counts) {
    if (id != 0) {
      group_.idSystems[id].push_back(static_cast<std::uint32_t>(group_.systems.size()));
    }
  }
  group_.systems.add(coded);
}

void Encoder::compareNames() {
  const std::size_t names = group_.names.size();
  group_.alike.assign(names, std::vector<double>(names));
  for (std::size_t a = 0; a < names; ++a) {
    for (std::size_t b = 0; b < names; ++b) {
      const std::string& first = group_.names[a];
      const std::string& second = group_.names[b];
      const bool isShort = a != b && (isShortFormOf(first, second) || isShortFormOf(second, first));
      group_.alike[a][b] = a == b ? 1 : isShort ? shortForm : 0;
    }
  }
}

CodedGroup Encoder::encode(const GroupEvidence& group) {
  for (std::size_t s = 0; s < group.size(); ++s) {
    addSystem(group, s);
    group_.staves += group.staffCount(s);
  }
  for (std::size_t f = 0; f < featureCount; ++f) {
    double known = 0;
    for (const int count : counts_[f]) {
      known += count;
    }
    for (const int count : counts_[f]) {
      group_.shares[f].push_back(count / known);
    }
  }
  compareNames();
  return std::move(group_);
}

}  // namespace

void CodedSystems::add(const std::vector<CodedStaff>& system) {
  firstStaves_.push_back(static_cast<std::uint32_t>(staves_.size()));
  for (const CodedStaff& staff : system) {
    staves_.push_back(index_.findOrAdd(
        hashOf(staff), [&](std::uint32_t known) { return different_[known] == staff; },
        [this](std::uint32_t known) { return hashOf(different_[known]); }, [&] { different_.push_back(staff); }));
  }
}

CodedSystem CodedSystems::operator[](std::size_t system) const {
  const std::size_t first = firstStaves_[system];
  const std::size_t end = system + 1 < size() ? firstStaves_[system + 1] : staves_.size();
  return {different_, std::span(staves_).subspan(first, end - first)};
}

CodedGroup encode(const GroupEvidence& group) {
  return Encoder().encode(group);
}

}  // namespace kiv
