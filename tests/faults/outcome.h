#pragma once

#include <optional>
#include <vector>

#include "tests/faults/failing_host.h"
#include "tests/faults/runs.h"

namespace kiv::test {

/// Which results a run leaves, as far as it gets.
enum class Results {
  complete,
  ofFewerNames,   ///< those of a names file that ends after its first read
  inPagesFolder,  ///< all of them, but beside the pages, as no folder was chosen
};

/// A run in which no call fails.
struct Undisturbed {
  explicit Undisturbed(RunKind kind, Results results = Results::complete);

  RunKind kind;
  std::vector<FileCall> calls;
  std::vector<Message> messages;
  std::optional<int> end;
  Disk before;
  Disk after;
};

/// What is documented for a run in which a call fails.
struct Outcome {
  std::vector<Message> messages;  ///< all of them
  std::optional<int> end;
  Results results = Results::complete;
  bool dropsNamesFile = false;  ///< after the user has seen it
};

Outcome outcomeAfter(const Undisturbed& run, InjectedFault fault);

}  // namespace kiv::test
