#include "apps/kivsys/commands/music_of_results.h"

#include <cstddef>
#include <set>

#include "music/music_warnings.h"
#include "verify/result_names.h"

namespace kiv {
namespace {

/// How many of the results, from the first on, have been written.
std::size_t writtenCount(Machine& machine, const std::string& stem, const WrittenResults& written, std::size_t all) {
  if (!written.names) {
    return all;
  }
  std::set<std::string> known;
  for (const std::string& name : *written.names) {
    known.insert(machine.upperCase(name));
  }
  std::size_t count = 0;
  while (count < all && known.contains(machine.upperCase(proof::resultName(stem, count + 1)))) {
    ++count;
  }
  return count;
}

}  // namespace

void MusicOfResults::resultHandedOver(std::int16_t system, const std::string&, const SharedBytes& bytes) {
  if (worker_ == nullptr) {
    compare(system, *bytes);
    return;
  }
  worker_->add([this, system, bytes] { compare(system, *bytes); });
}

/// The thread's part, if there is one. While it lasts, nothing else uses what it changes.
void MusicOfResults::compare(std::int16_t system, std::string_view bytes) {
  const std::size_t index = check_.count();
  hasGap_ = hasGap_ || static_cast<std::size_t>(system) != index + 1 || index >= group_.systemCount();
  if (!hasGap_) {
    const auto music = musicOfPage(bytes, group_.instrumentsOf(index));
    hasGap_ = !music;
    if (music) {
      check_.add(*music);
    }
  }
}

std::vector<Message> MusicOfResults::warnings(Files& files, Machine& machine, const WrittenResults& written) {
  if (worker_ != nullptr) {
    worker_->finish();
  }
  const auto stem = proof::stemOfResults(machine, written.first);
  if (!stem) {
    return {};
  }
  const std::size_t count = writtenCount(machine, *stem, written, group_.systemCount());
  if (check_.count() > count) {  // results that are not there count for nothing
    check_ = MusicCheck(FaultPlaces::no);
  }
  const auto resultAt = [&](std::size_t index) {
    return CheckedResult{proof::resultName(*stem, index + 1), group_.instrumentsOf(index)};
  };
  return warningsOf(check_.finish(files, {count, resultAt, count == group_.systemCount()}));
}

}  // namespace kiv
