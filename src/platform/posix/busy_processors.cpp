#include "platform/busy_processors.h"

#include <pthread.h>
#include <sched.h>

namespace kiv {

void leaveBusyProcessors() noexcept {
#ifdef SCHED_BATCH  // not every system has it
  int policy = 0;
  sched_param parameters{};
  const pthread_t thread = ::pthread_self();
  if (::pthread_getschedparam(thread, &policy, &parameters) == 0 && policy == SCHED_OTHER) {
    static_cast<void>(::pthread_setschedparam(thread, SCHED_BATCH, &parameters));
  }
#endif
}

#ifdef __linux__

std::optional<int> thisProcessor() noexcept {
  const int processor = ::sched_getcpu();
  return processor >= 0 ? std::optional(processor) : std::nullopt;
}

/// On a machine with more processors than a set of this size has, the first call fails.
void avoidProcessor(std::optional<int> processor, std::optional<int> before) noexcept {
  cpu_set_t allowed;
  if (!processor || ::sched_getaffinity(0, sizeof allowed, &allowed) != 0) {
    return;
  }
  if (before) {
    CPU_SET(static_cast<unsigned>(*before), &allowed);
  }
  CPU_CLR(static_cast<unsigned>(*processor), &allowed);
  if (CPU_COUNT(&allowed) > 0) {
    static_cast<void>(::sched_setaffinity(0, sizeof allowed, &allowed));
  }
}

#else

std::optional<int> thisProcessor() noexcept {
  return std::nullopt;
}

void avoidProcessor(std::optional<int> /*processor*/, std::optional<int> /*before*/) noexcept {}

#endif

}  // namespace kiv
