#pragma once

#include "apps/kivsys/corrections/correction_tables.h"

namespace kiv {

struct FixOptions;

/// Reads the corrections that a command line asks for: those of its tables, and its own.
IdRequests readRequests(NativeSystem& system, const FixOptions& options);

}  // namespace kiv
