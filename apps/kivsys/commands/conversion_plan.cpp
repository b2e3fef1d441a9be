#include "apps/kivsys/commands/conversion_plan.h"

#include "apps/kivsys/safety/result_files.h"
#include "conversion/dump_memory.h"
#include "input/file_names.h"

namespace kiv {

RestStaves restStavesOf(const ConvertOptions& options) {
  return options.fit ? RestStaves::fitting : RestStaves::asKnownSoFar;
}

bool goesAhead(const ConvertOptions& options) {
  return options.jobs != 1 && !options.trace && !options.dryRun;
}

std::optional<ResultFolder> folderOfResults(ConsoleSystem& system, const ConvertOptions& options,
                                            const std::string& firstResultFile) {
  if (firstResultFile.empty() || options.selection.likePanel) {
    return std::nullopt;
  }
  const std::string typed = folderOfPath(system, options.result);
  return ResultFolder(system, NativeSystem::exactPath(justPath(system, firstResultFile)), typed);
}

std::vector<std::string> refusalsOf(ConsoleSystem& system, const ConvertOptions& options, const SelectedPages& pages,
                                    const ResultPlan& results) {
  if (results.firstResultFile.empty()) {
    system.bindFolder();
  } else if (const auto reason = refusalOfResultName(options.result)) {
    return {*reason};
  }
  if (results.folder != nullptr) {
    if (const auto reason = results.folder->refusal()) {
      return {*reason};
    }
  }
  const std::string folder = folderOfRun(system, options.selection);
  auto outputs = analysisOutputs(system, folder);
  if (options.trace) {
    outputs.emplace_back("dump", system.diskName(folder + "\\" + dumpFile));
  }
  std::vector<std::string> reasons = InputFiles(pages).refusals(outputs);
  const PlannedResults planned{results.firstResultFile, options.allowZeroId, options.force, options.keepGoing};
  const auto others = refusalsOfResults(system, pages, planned);
  reasons.insert(reasons.end(), others.begin(), others.end());
  return reasons;
}

std::vector<std::string> refusalsOfLayout(ConsoleSystem& system, ConvertOptions& options, ListedConversion& listed) {
  const auto errors = listed.prepare(system, options.selection.layout, options.allowZeroId);
  options.force = options.force || listed.hasSilent();
  return errors.empty() ? listed.refusals() : errors;
}

std::vector<std::string> writtenFolders(ConsoleSystem& system, const ConvertOptions& options,
                                        const SelectedPages& pages, const ResultPlan& results) {
  std::vector<std::string> folders{system.diskName(folderOfRun(system, options.selection))};
  if (results.folder != nullptr) {
    folders.push_back(results.folder->path());
  } else if (!pages.pages.empty()) {
    folders.push_back(folderOfPath(system, pages.pages.front().path));
  }
  return folders;
}

}  // namespace kiv
