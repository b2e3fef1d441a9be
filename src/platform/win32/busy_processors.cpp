#include "platform/busy_processors.h"

namespace kiv {

void leaveBusyProcessors() noexcept {}

}  // namespace kiv
