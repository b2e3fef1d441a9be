#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kiv::test {

/// An instrument of a group that is to be written.
struct PlannedInstrument {
  int id = 0;
  std::string name;
  std::string abbreviation;
  int clef = 0;
  int clefHeight = 0;
  int lines = 5;
  int size = 1;
  int keyDistance = 0;  ///< sharps more than the piece has
  bool hasKey = true;   ///< shows a key signature
  int noteHeight = 0;   ///< about which its notes lie
  int brace = 0;        ///< staves that a brace at it spans; 0 for none
};

/// A staff, and the id that is written at it.
struct PlannedStaff {
  std::size_t instrument = 0;
  int writtenId = 0;
};

enum class NamesAtStaves { none, full, abbreviated };

struct PlannedSystem {
  std::vector<PlannedStaff> staves;  ///< from the top down
  int key = 0;
  NamesAtStaves names = NamesAtStaves::none;
  bool hasMusic = true;
  std::vector<std::pair<std::size_t, int>> cues;  ///< at the staff of an index, of an instrument id
};

struct PlannedPage {
  std::vector<PlannedSystem> systems;  ///< from the top down; a single one if there are several files
  std::size_t files = 1;
};

struct PlannedGroup {
  std::string kind;  ///< what it is an example of
  std::vector<PlannedInstrument> instruments;
  std::vector<PlannedPage> pages;
};

/// Where a staff was written, and what was meant.
struct WrittenStaff {
  std::string file;  ///< without a folder
  int staff = 0;     ///< its number in the file
  int writtenId = 0;
  int trueId = 0;
};

struct WrittenPage {
  std::string file;
  std::string text;  ///< as kivsys build takes it
};

struct WrittenGroup {
  std::string kind;
  std::size_t systems = 0;
  std::vector<WrittenPage> pages;
  std::vector<WrittenStaff> staves;
};

/// How many systems the group has.
std::size_t systemsOf(const PlannedGroup& group);
/// Writes the pages of the group as text.
WrittenGroup writeGroup(const PlannedGroup& group);

}  // namespace kiv::test
