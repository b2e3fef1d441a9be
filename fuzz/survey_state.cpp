// Any bytes as a state file of a survey.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "apps/kivsys/survey/state_text.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/parts.h"

namespace kiv::fuzz {
namespace {

/// The same state, written by a run that keeps each of its pieces.
std::string writtenAgain(const StateText& state) {
  std::string text = stateHead(state.roots);
  for (const auto& [key, entry] : state.entries) {
    LibraryPiece piece;
    piece.path = key;
    piece.stamps = entry.stamps;
    piece.digest = entry.digest;
    text += stateLine(piece, entry.findings);
  }
  return text;
}

/// The state whose names are as the first one's when they are written. A piece is known by its path and first file.
StateText withNamesWritten(const StateText& state) {
  StateText written;
  written.roots = state.roots;
  for (auto [key, entry] : state.entries) {
    const std::string pieceKey = key + "/" + entry.stamps.front().name;
    for (PageStamp& stamp : entry.stamps) {
      stamp.name = stateName(stamp.name);
    }
    written.entries[stateName(pieceKey)] = entry;
  }
  return written;
}

void checkEntry(const StateEntry& entry) {
  const PieceFindings& findings = entry.findings;
  expect(findings.pages > 0 && findings.pages <= entry.stamps.size(), "a page has a file");
  expect(findings.systems || !findings.problems.empty(), "an analysis ended, or says why not");
  expect(findings.systems.has_value() == findings.consistent.has_value(), "an analysis ended as a whole");
}

void run(std::string_view text) {
  const auto state = readState(text);
  if (!state) {
    return;
  }
  expect(state->usableBytes <= text.size(), "no more is used than there is");
  expect(text[state->usableBytes - 1] == '\n', "what is used are whole lines");
  for (const auto& [key, entry] : state->entries) {
    checkEntry(entry);
  }
  const auto cut = readState(text.substr(0, state->usableBytes));
  expect(cut && cut->entries == state->entries && cut->roots == state->roots, "an incomplete line says nothing");
  const auto again = readState(writtenAgain(*state));
  const StateText expected = withNamesWritten(*state);
  expect(again && again->roots == expected.roots && again->entries == expected.entries, "what is kept reads the same");
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
