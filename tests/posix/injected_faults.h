#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kiv::test {

enum class Failure {
  none,
  fails,
  writesHalf,    // of what is to be written
  killsBefore,   // the process ends before the call does anything,
  killsAfter,    // right after the call, before its result is seen,
  killsHalfway,  // or when half of what is to be written is
};

/// What fails, and when. Plain numbers, as the functions below run before any constructor.
struct InjectedFault {
  bool counting = false;
  int call = 0;           // the call that fails, counted from 1; 0 is none
  bool persists = false;  // all later calls fail as well
  Failure failure = Failure::none;
  int error = 0;                     // why a call fails
  std::size_t freeSpace = SIZE_MAX;  // bytes that still fit on the disk
};

inline constexpr int mostCalls = 64;

/// The number of calls that the last run made under fault injection, and their names.
extern int callsMade;
extern const char* callNames[mostCalls];

/// While it lives, calls are counted and fail as injected.
class FaultInjection {
 public:
  explicit FaultInjection(InjectedFault injected);
  FaultInjection(const FaultInjection&) = delete;
  FaultInjection& operator=(const FaultInjection&) = delete;
  ~FaultInjection();
};

/// The names of the calls that the last run made under fault injection.
std::vector<std::string> calls();

}  // namespace kiv::test
