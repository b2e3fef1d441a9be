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

}  // namespace kiv
