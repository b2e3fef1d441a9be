#include "apps/kivsys/survey/survey_state.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "apps/kivsys/exit_status.h"
#include "platform/bounded_file.h"
#include "platform/console/native_system.h"

namespace kiv {
namespace {

constexpr std::size_t longestState = 256 * most_bytes::mebibyte;

/// The folders under names that do not depend on the current one, in order.
std::vector<std::string> rootsOf(const std::vector<std::string>& folders) {
  std::vector<std::string> roots;
  for (const std::string& folder : folders) {
    std::error_code failure;
    const auto path = std::filesystem::canonical(folder, failure);
    roots.push_back(stateName(NativeSystem::toUtf8(failure ? folder : path.string())));
  }
  std::sort(roots.begin(), roots.end());
  roots.erase(std::unique(roots.begin(), roots.end()), roots.end());
  return roots;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) {
    text += (text.empty() ? "" : ", ") + NativeSystem::fromUtf8(name);
  }
  return text;
}

StateRefusal cannotWrite(const std::string& file, const std::string& failure) {
  return {exit_status::critical, "cannot write to " + file + ": " + failure};
}

StateRefusal isBusy(const std::string& file, const std::optional<std::uint64_t>& holder) {
  return {exit_status::busy,
          "another survey" + (holder ? " (process " + std::to_string(*holder) + ")" : "") + " is using " + file};
}

}  // namespace

std::optional<StateRefusal> SurveyState::open(const std::string& file, const std::vector<std::string>& folders) {
  switch (file_.open(file)) {
    case LockedFile::Outcome::busy:
      return isBusy(file, file_.holder());
    case LockedFile::Outcome::failed:
      return cannotWrite(file, file_.failure());
    case LockedFile::Outcome::open:
      break;
  }
  auto refusal = load(file, rootsOf(folders));
  isOpen_ = !refusal;
  return refusal;
}

std::optional<StateRefusal> SurveyState::load(const std::string& file, const std::vector<std::string>& roots) {
  if (file_.size() > longestState) {
    return StateRefusal{exit_status::critical, file + " " + tooLarge(longestState, "the state of a survey")};
  }
  const auto text = file_.read();
  if (!text) {
    return StateRefusal{exit_status::critical, "cannot read " + file + ": " + file_.failure()};
  }
  const std::string head = stateHead(roots);
  if (head.starts_with(*text)) {  // nothing, or what a run began that was stopped
    return file_.replaceEnd(0, head) ? std::nullopt : std::optional(cannotWrite(file, file_.failure()));
  }
  auto state = readState(*text);
  if (!state) {
    return StateRefusal{exit_status::wrongUsage, file + " is not the state of a survey; name another file"};
  }
  if (state->roots != roots) {
    return StateRefusal{exit_status::wrongUsage,
                        file + " is the state of a survey of " + joined(state->roots) + "; name another file"};
  }
  if (!file_.replaceEnd(state->usableBytes, "")) {
    return cannotWrite(file, file_.failure());
  }
  known_ = std::move(state->entries);
  return std::nullopt;
}

std::optional<PieceFindings> SurveyState::find(const LibraryPiece& piece) const {
  const auto known = known_.find(stateName(NativeSystem::toUtf8(piece.key())));
  if (known == known_.end()) {
    return std::nullopt;
  }
  const StateEntry& entry = known->second;
  const bool isSame = std::equal(entry.stamps.begin(), entry.stamps.end(), piece.stamps.begin(), piece.stamps.end(),
                                 [](const PageStamp& old, const PageStamp& now) {
                                   return old.name == stateName(NativeSystem::toUtf8(now.name)) &&
                                          old.bytes == now.bytes && old.changed == now.changed;
                                 });
  return isSame && (entry.digest.empty() || entry.digest == digestOf(piece)) ? std::optional(entry.findings)
                                                                             : std::nullopt;
}

bool SurveyState::keep(const LibraryPiece& piece, const PieceFindings& findings) {
  if (!isOpen_) {
    return true;
  }
  if (!file_.append(stateLine(piece, findings))) {
    return false;
  }
  // A piece that a power cut takes away is analyzed again; waiting for the disk after each would take longer.
  constexpr auto interval = std::chrono::seconds(1);
  return std::chrono::steady_clock::now() - flushed_ < interval || flush();
}

bool SurveyState::flush() {
  flushed_ = std::chrono::steady_clock::now();
  return !isOpen_ || file_.flush();
}

}  // namespace kiv
