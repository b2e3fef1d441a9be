#include "platform/host.h"

namespace kiv {
namespace {

enum class WholeRun { ends, isPassedOn };

std::optional<int> exitCodeOf(User& user, const std::function<void()>& run, WholeRun whole) {
  try {
    run();
    return std::nullopt;
  } catch (const ProgramEnd& end) {
    if (whole == WholeRun::isPassedOn && end.endsWholeRun()) {
      throw;
    }
    if (end.message) {
      user.show(*end.message);
    }
    return end.exitCode;
  }
}

}  // namespace

std::optional<int> exitCodeOf(User& user, const std::function<void()>& run) {
  return exitCodeOf(user, run, WholeRun::ends);
}

std::optional<int> exitCodeOfPart(User& user, const std::function<void()>& part) {
  return exitCodeOf(user, part, WholeRun::isPassedOn);
}

}  // namespace kiv
