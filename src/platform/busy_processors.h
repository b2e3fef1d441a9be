#pragma once

namespace kiv {

/// Lets the thread that calls this leave a processor to the thread that is at work there: when it wakes up, it waits
/// for a free one. Does nothing where the system has no such kind of thread, or the run has another priority.
void leaveBusyProcessors() noexcept;

}  // namespace kiv
