#pragma once

#include <optional>
#include <vector>

#include "tests/faults/failing_host.h"
#include "tests/faults/runs.h"

namespace kiv::test {

/// Which results a run leaves, as far as it gets.
enum class Results {
  asUsual,
  ofFewerNames,   ///< those of a names file that holds its first piece only
  inPagesFolder,  ///< the usual ones, but beside the pages, as no folder was chosen
};

/// A run in which no call goes wrong.
struct Undisturbed {
  explicit Undisturbed(RunKind kind, Results results = Results::asUsual);

  RunKind kind;
  std::vector<FileCall> calls;
  std::vector<Message> messages;
  std::optional<int> end;
  Disk before;
  Disk after;
};

/// What is promised for a run in which something goes wrong.
struct Outcome {
  std::vector<Message> messages;  ///< all of them
  std::optional<int> end;
  Results results = Results::asUsual;
  bool dropsNamesFile = false;  ///< after the person has seen it
};

Outcome outcomeAfter(const Undisturbed& run, Order order);

}  // namespace kiv::test
