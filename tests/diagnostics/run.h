#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/group_facts.h"
#include "diagnostics/problems.h"
#include "diagnostics/system_facts.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv {

inline void PrintTo(const Problem& problem, std::ostream* out) {
  *out << problem.code << " of message " << problem.message << " at " << problem.file.value_or("no file") << ", system "
       << problem.system.value_or(-1) << ", staff " << problem.staff.value_or(-1) << ", instrument "
       << problem.instrument.value_or(-1) << ", item " << (problem.place ? problem.place->item : -1) << " @"
       << (problem.place ? problem.place->offset : 0) << ", " << problem.repeats << " times";
}

}  // namespace kiv

namespace kiv::test {

/// An analysis of pages in C:\M, the facts about them, and the problems in its messages.
struct DiagnosedRun {
  void addPage(const std::string& file, std::string_view text) { addBytes(file, page(text)); }
  void addBytes(const std::string& file, const std::string& bytes) {
    host.addFile("C:\\M\\" + file, bytes);
    listFile(file);
  }
  void listFile(const std::string& file) { namesFile += "C:\\M\\" + file + " 1\r\n"; }
  void run(bool allowZeroId = false, WantedFacts wanted = {true, LossScan::staves}) {
    host.addFile("C:\\N.TXT", namesFile);
    group.emplace(wanted);
    end = endOf(host, [&] { analyze(program, "C:\\N.TXT", allowZeroId, &*group); });
  }
  /// All systems of the facts.
  std::vector<SystemFact> systems() const {
    std::vector<SystemFact> systems;
    for (std::size_t s = 0; s < group->systemCount(); ++s) {
      systems.push_back(group->system(s));
    }
    return systems;
  }
  std::vector<Problem> problems() { return findProblems(host, host.shown); }

  FakeHost host;
  KivSystem program{host};
  std::string namesFile;
  std::optional<GroupFacts> group;  ///< of the last run
  std::optional<int> end;
};

}  // namespace kiv::test
