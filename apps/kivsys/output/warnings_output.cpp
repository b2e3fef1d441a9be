#include "apps/kivsys/output/warnings_output.h"

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/diagnostics_json.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

std::string lineOf(const Message& warning, const FileNamer& nameOf, bool withCode) {
  const Location& location = warning.location;
  std::string line;
  if (!location.file.empty()) {
    line += nameOf(location.file) + ": ";
  }
  if (location.item != 0) {
    line += "item " + std::to_string(location.item) + ": ";
  }
  line += "warning: " + warning.text;
  if (location.system) {
    const std::string bar = location.bar ? ", bar " + std::to_string(*location.bar) : "";
    line += " (system " + std::to_string(*location.system) + bar + ")";
  }
  const std::string code = withCode ? " [" + std::string(warning.code) + "]" : "";
  return "kivsys: " + printable(line) + code + "\n";
}

}  // namespace

std::string asText(const Warnings& warnings, const FileNamer& nameOf, bool withCodes) {
  std::string lines;
  for (const Message& warning : warnings.messages) {
    lines += lineOf(warning, nameOf, withCodes);
  }
  return lines;
}

std::vector<Json> jsonOf(const Warnings& warnings, const std::vector<FoundFile>& paths) {
  std::vector<Json> all;
  for (const Problem& problem : warnings.problems) {
    Json object = jsonOf(problem, paths);
    object["severity"] = "warning";
    object["message"] = Json();
    object["text"] = NativeSystem::toUtf8(warnings.messages[problem.message].text);
    all.push_back(object);
  }
  return all;
}

Json jsonOf(const std::vector<Problem>& problems, const Warnings& warnings, const std::vector<FoundFile>& paths) {
  Json all = Json::array();
  for (const Problem& problem : problems) {
    all.push_back(jsonOf(problem, paths));
  }
  for (const Json& warning : jsonOf(warnings, paths)) {
    all.push_back(warning);
  }
  return all;
}

}  // namespace kiv
