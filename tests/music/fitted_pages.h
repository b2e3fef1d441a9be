#pragma once

#include <map>
#include <string>
#include <vector>

#include "music/music_warnings.h"
#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"

namespace kiv::test {

/// Pages P1.MUS, P2.MUS and so on after a conversion with fitting rest staves, without instrument numbers.
class FittedPages {
 public:
  explicit FittedPages(const std::vector<std::string>& texts, RestStaves restStaves = RestStaves::fitting);
  /// The same of pages with these names.
  struct Files {
    std::map<std::string, std::string> texts;
  };
  explicit FittedPages(const Files& files, RestStaves restStaves = RestStaves::fitting);

  /// The items of a staff in a result, or only those of a type, as page text; staff and type are left out: "28 kind -2
  /// duration 3 p9 -1".
  std::string items(int system, int staff, const std::string& type);
  /// The braces and brackets of a result: "barline 1 at 6 spans 2 kind 9".
  std::string braces(int system);
  /// The warnings about the results: "bar-two-rests system 1 bar 4: text". Systems are given by the instruments that
  /// play in them.
  std::vector<std::string> warnings(const std::vector<std::vector<std::int16_t>>& playing);
  /// What verify --fit finds.
  std::string findings() { return group_.findings(); }
  /// Makes a result something that is no page.
  void damageResult(int system) { group_.replaceResult(system, "no page"); }
  bool converted() const { return group_.converted(); }

 private:
  std::vector<std::string> lines(int system) const;

  ConvertedGroup group_;
};

}  // namespace kiv::test
