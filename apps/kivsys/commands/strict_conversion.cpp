#include "apps/kivsys/commands/strict_conversion.h"

#include <utility>

#include "apps/kivsys/commands/music_check.h"
#include "apps/kivsys/commands/warned_run.h"

namespace kiv {

RestStaves restStavesOf(const ConvertOptions& options) {
  return options.fit ? RestStaves::fitting : RestStaves::asKnownSoFar;
}

Refusal refusalByStrict(ConsoleSystem& system, const std::string& namesFile, const ConvertOptions& options,
                        const ResultPlan& plan) {
  TriedAnalysis analysis(system, namesFile, options.allowZeroId);
  if (analysis.isRefused({options.allowZeroId, true, options.force, plan.listed.ids()})) {
    return {true, {}};
  }
  auto warnings = tryForMusicWarnings(
      analysis, {plan.firstResultFile, options.force, restStavesOf(options), plan.listed.required()});
  const bool isRefused = !warnings.empty();
  return {isRefused, std::move(warnings)};
}

}  // namespace kiv
