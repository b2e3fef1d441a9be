#include "apps/kivsys/commands/strict_refusal.h"

#include <utility>

#include "apps/kivsys/commands/conversion_next_step.h"
#include "apps/kivsys/commands/music_check.h"
#include "apps/kivsys/commands/warned_run.h"

namespace kiv {
namespace {

StrictRun strictRun(const ConvertOptions& options, const ResultPlan& plan) {
  return {options.allowZeroId, true, options.force, plan.listed.ids()};
}

TriedConversion conversionOf(const ConvertOptions& options, const ResultPlan& plan) {
  return {plan.firstResultFile, options.force, restStavesOf(options), plan.listed.required()};
}

/// Whether a run with --fit would write its results.
bool isAcceptedWithFit(ConsoleSystem& system, const std::string& namesFile, ConvertOptions options,
                       const ResultPlan& plan) {
  options.fit = true;
  TriedAnalysis analysis(system, namesFile, options.allowZeroId);
  const TriedMusic music = tryForMusicWarnings(analysis, conversionOf(options, plan));
  return music.endsNormally && music.warnings.empty();
}

}  // namespace

Refusal refusalByStrict(ConsoleSystem& system, const std::string& namesFile, const ConvertOptions& options,
                        const ResultPlan& plan) {
  Refusal refusal;
  TriedAnalysis analysis(system, namesFile, options.allowZeroId);
  refusal.isRefused = analysis.isRefused(strictRun(options, plan));
  if (refusal.isRefused) {
    return refusal;
  }
  TriedMusic music = tryForMusicWarnings(analysis, conversionOf(options, plan));
  refusal.isRefused = !music.warnings.empty();
  refusal.endsWithError = !refusal.isRefused && !music.endsNormally;
  refusal.overMusic = std::move(music.warnings);
  refusal.isAvoidedByFit =
      refusal.writesNothing() && canFit(options) && isAcceptedWithFit(system, namesFile, options, plan);
  return refusal;
}

}  // namespace kiv
