#pragma once

#include <functional>
#include <optional>

#include "platform/files.h"
#include "platform/machine.h"
#include "platform/programs.h"
#include "platform/user.h"

namespace kiv {

/// All that surrounds one run of the program. A procedure that needs only a part takes that part. The parts belong to
/// the program's main and must outlive the run.
struct Host {
  Files& files;
  User& user;
  Programs& programs;
  Machine& machine;
};

/// Runs a procedure of the program, and shows the critical message that ends it. Returns the exit code when the
/// procedure ended the program, nullopt when it returned.
std::optional<int> exitCodeOf(User& user, const std::function<void()>& run);
/// The same for a part of a run, which does not end with it. The end of the whole run is passed on.
std::optional<int> exitCodeOfPart(User& user, const std::function<void()>& part);

}  // namespace kiv
