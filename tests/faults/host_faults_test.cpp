#include <iostream>

#include <gtest/gtest.h>

#include "tests/faults/disk_checks.h"
#include "tests/faults/outcome.h"

namespace kiv::test {
namespace {

/// Lets one call after the other fail.
class HostFaults : public testing::TestWithParam<RunKind> {
 protected:
  HostFaults() : run(GetParam()) {}

  void expectNextRunSucceeds(FailingHost& host) const;
  void expectOutcome(InjectedFault fault) const;

  Undisturbed run;
};

INSTANTIATE_TEST_SUITE_P(Runs, HostFaults, testing::Values(RunKind::analysis, RunKind::panel, RunKind::sort),
                         [](const auto& kind) { return nameOf(kind.param); });

void HostFaults::expectNextRunSucceeds(FailingHost& host) const {
  host.failing.fault = {};
  host.messages.clear();
  host.addFile(namesFile, run.before.at(namesFile));
  EXPECT_EQ(perform(run.kind, host), run.end);
  Disk disk = host.files();
  const Disk& expected = run.after;
  std::erase_if(
      disk, [&](const auto& file) { return file.first.starts_with("C:\\M\\WORK") && !expected.contains(file.first); });
  if (disk.at("C:\\M\\WORK0001.MUS") != expected.at("C:\\M\\WORK0001.MUS")) {
    disk["C:\\M\\WORK0001.MUS"] = expected.at("C:\\M\\WORK0001.MUS");  // a result beside the pages stays there
  }
  EXPECT_EQ(disk, expected);
}

void HostFaults::expectOutcome(InjectedFault fault) const {
  FailingHost host;
  prepareDisk(host);
  host.failing.fault = fault;
  const Outcome expected = outcomeAfter(run, fault);
  const std::optional<int> end = perform(run.kind, host);
  EXPECT_EQ(end, expected.end);
  EXPECT_EQ(host.messages, expected.messages);
  EXPECT_GE(host.failing.calls.size(), static_cast<std::size_t>(fault.call)) << "the call was not made";
  expectInputs(run.before, host.files(), expected.dropsNamesFile);
  expectWhole(run.before, host.files(),
              expected.results == Results::complete ? run.after : Undisturbed(run.kind, expected.results).after);
  expectNextRunSucceeds(host);
}

TEST_P(HostFaults, EveryCallHasItsMessageAndLeavesFilesWhole) {
  ASSERT_GT(run.calls.size(), 20U);
  int cases = 0;
  for (const Failure failure : {Failure::fails, Failure::shortens}) {
    for (const bool persists : {false, true}) {
      for (int call = 1; call <= static_cast<int>(run.calls.size()); ++call) {
        SCOPED_TRACE((failure == Failure::fails ? "fails " : "is short ") + std::string(persists ? "from " : "at ") +
                     std::to_string(call) + ": " +
                     testing::PrintToString(run.calls[static_cast<std::size_t>(call - 1)]));
        expectOutcome({call, persists, failure});
        ++cases;
      }
    }
  }
  std::cout << nameOf(run.kind) << ": " << run.calls.size() << " calls, " << cases << " cases\n";
}

}  // namespace
}  // namespace kiv::test
