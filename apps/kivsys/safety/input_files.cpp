#include "apps/kivsys/safety/input_files.h"

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "platform/separators.h"

namespace kiv {

InputFiles::InputFiles(const SelectedPages& pages) {
  for (const FoundFile& page : pages.pages) {
    add(page);
  }
  for (const std::string& path : pages.badPaths) {
    add(path);
  }
  if (!pages.listPath.empty()) {
    add(pages.listPath);
  }
  for (const std::string& table : pages.tables) {
    add(table);
  }
  if (pages.namesFile == "-" || pages.isInputATable) {
    addStandardInput();
  }
}

void InputFiles::add(const FoundFile& file) {
  if (const auto identity = file.stamp ? file.stamp->identity : identityOf(file.path)) {
    paths_.emplace(*identity, file.path);
  }
}

void InputFiles::addStandardInput() {
  if (const auto identity = identityOfStandardInput()) {
    paths_.emplace(*identity, "on standard input");
  }
}

void InputFiles::addTyped(NativeSystem& system, const std::string& typed) {
  if (typed == "-") {
    addStandardInput();
  } else {
    add(system.diskName(NativeSystem::coreName(typed)));
  }
}

std::optional<std::string> InputFiles::find(const std::string& path) const {
  const auto identity = identityOf(path);
  const auto input = identity ? paths_.find(*identity) : paths_.end();
  return input == paths_.end() ? std::nullopt : std::optional(input->second);
}

std::optional<std::string> InputFiles::refusal(const std::string& output, const std::string& path) const {
  if (const auto input = find(path)) {
    return "the " + output + " " + path + " is the same file as the input " + *input;
  }
  return std::nullopt;
}

std::optional<std::string> InputFiles::refusalToReplace(const std::string& output, const std::string& path) const {
  const auto reason = refusal(output, path);
  return reason || kindOf(path) != PathKind::device
             ? reason
             : std::optional("the " + output + " " + path + " is a device or a pipe, and is not replaced");
}

std::vector<std::string> InputFiles::refusals(const std::vector<std::pair<std::string, std::string>>& outputs) const {
  std::vector<std::string> reasons;
  for (const auto& [output, path] : outputs) {
    if (const auto reason = refusal(output, path)) {
      reasons.push_back(*reason);
    }
  }
  return reasons;
}

std::vector<std::pair<std::string, std::string>> analysisOutputs(NativeSystem& system, const std::string& folder) {
  const std::string start = folder + (endsWithBackslash(system, folder) ? "" : "\\");
  return {{"report", system.diskName(start + reportFile)}, {"verdict", system.diskName(start + verdictFile)}};
}

}  // namespace kiv
