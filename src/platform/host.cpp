#include "platform/host.h"

namespace kiv {

std::optional<int> exitCodeOf(User& user, const std::function<void()>& run) {
  try {
    run();
    return std::nullopt;
  } catch (const ProgramEnd& end) {
    if (end.message) {
      user.show(*end.message);
    }
    return end.exitCode;
  }
}

}  // namespace kiv
