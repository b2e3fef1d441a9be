#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include <rapidcheck.h>

namespace kiv::test {

/// One staff of a system: where it stands.
struct PlacedStaff {
  std::string file;
  int staff = 0;  ///< its number in the file
};

/// The pages of a piece as page text, and the systems that they were generated from.
struct Group {
  std::map<std::string, std::string> pages;         ///< the text of each page file by its name, in their order
  std::vector<std::map<int, PlacedStaff>> systems;  ///< the staves of each system by instrument, in their order
};

/// Shows the pages as text.
void showValue(const Group& group, std::ostream& out);

/// Groups that can be converted. In each system the staves are numbered without a gap and the barline at the left of
/// the lowest spans them all; no instrument has two of them. Every bar of every staff has a note or rest less than 999
/// page units right of its barline. The first system has a time signature, and all are of known length. No brace has a
/// kind above the number of its staves, as the analysis takes it for what a barline spans. A staff that is hidden is
/// not the lowest. Staves have no parameters beyond P17, and texts are as the writer can write them: short ones have at
/// most 5 characters, counted ones at least one, all others whole chunks.
///
/// Every series, counted from 1, is one of other groups.
rc::Gen<Group> groups(int series);

}  // namespace kiv::test
