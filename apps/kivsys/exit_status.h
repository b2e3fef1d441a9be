#pragma once

namespace kiv::exit_status {

constexpr int normal = 0;
constexpr int critical = 1;
constexpr int wrongUsage = 2;
constexpr int notUsable = 3;  ///< as it is, when that was asked for

}  // namespace kiv::exit_status
