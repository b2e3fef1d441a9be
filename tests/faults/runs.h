#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_host.h"

namespace kiv::test {

inline const std::string namesFile = "C:\\KIV\\NAMES.TXT";
inline const std::string settingsFile = "C:\\KIV\\KIVPROJ.PRO";
inline const std::string answerFile = "KIVFOLDR.KIV";

/// A small group in C:\M: two instruments, the same on a page in two files, and a page that lacks one of them. The
/// names in their order.
const std::vector<std::string>& groupPages();

/// A disk with the group, what the panel needs, and the results of earlier runs.
void prepareDisk(FakeHost& host);

/// Everything on the disk, by full name in capitals.
using Disk = std::map<std::string, std::string>;

enum class RunKind {
  analysis,  ///< as a sibling tool asks for it
  panel,     ///< the panel's start, Analyze, the choice of a folder, Convert, and the developers' dump
  sort,      ///< the button Sort Instrument
};

std::string nameOf(RunKind run);

/// Runs as far as possible: a button that is not enabled is not clicked. Returns the exit code when the program ended.
std::optional<int> perform(RunKind run, const Host& host);

}  // namespace kiv::test
