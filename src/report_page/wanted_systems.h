#pragma once

#include <cstddef>
#include <vector>

#include "report_page/report_data.h"
#include "report_page/system_pictures.h"

namespace kiv::report {

/// The systems to be drawn, the most important first: those with problems, one of each layout, all that deviate, those
/// with warnings.
/// Indices of facts; all of them if that is asked for.
std::vector<std::size_t> wantedSystems(const ReportData& data, const WantedPictures& pictures, bool all);

}  // namespace kiv::report
