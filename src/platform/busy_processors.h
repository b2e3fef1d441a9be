#pragma once

#include <optional>

namespace kiv {

/// Lets the thread that calls this leave a processor to the thread that is at work there: when it wakes up, it waits
/// for a free one. Does nothing where the system has no such kind of thread, or the run has another priority.
void leaveBusyProcessors() noexcept;

/// The processor that the thread that calls this is on; nullopt where the system does not say.
std::optional<int> thisProcessor() noexcept;

/// Keeps the thread that calls this off a processor, if it may use others. Two threads that wake each other often may
/// be put on the same one otherwise, where they take turns while another is free. The one that it was kept off before,
/// if any, can be used again. Does nothing where the system cannot.
void avoidProcessor(std::optional<int> processor, std::optional<int> before = std::nullopt) noexcept;

}  // namespace kiv
