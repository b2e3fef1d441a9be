#pragma once

namespace kiv::exit_status {

constexpr int normal = 0;
constexpr int critical = 1;
constexpr int wrongUsage = 2;
constexpr int notQualified = 3;

}  // namespace kiv::exit_status
