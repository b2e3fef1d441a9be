#pragma once

#include "tests/faults/runs.h"

namespace kiv::test {

/// Every result is as it was before or that of the whole run; a text that was being written may end early. There is no
/// other file.
void expectWhole(const Disk& before, const Disk& disk, const Disk& whole);

/// All that is no result is there, byte for byte; the names file only unless it was to be dropped.
void expectInputs(const Disk& before, const Disk& disk, bool dropsNamesFile);

}  // namespace kiv::test
