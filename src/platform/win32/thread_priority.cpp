#include "platform/thread_priority.h"

namespace kiv {

void leaveBusyProcessors() noexcept {}

}  // namespace kiv
