#pragma once

namespace kiv::exit_status {

constexpr int normal = 0;
constexpr int critical = 1;
constexpr int wrongUsage = 2;
constexpr int notUsable = 3;  ///< as it is, when that was asked for
constexpr int busy = 4;       ///< another run is at work in the folder, or uses the file

/// Of a program that a signal has ended.
constexpr int afterSignal(int signal) {
  constexpr int base = 128;
  return base + signal;
}

}  // namespace kiv::exit_status
