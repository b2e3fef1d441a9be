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

Json jsonOf(const Warnings& warnings, const Problem& problem, const FilePaths& paths) {
  Json object = jsonOf(problem, paths);
  object["severity"] = "warning";
  object["message"] = Json();
  object["text"] = NativeSystem::toUtf8(warnings.messages[problem.message].text);
  return object;
}

AddElements elementsOf(const std::vector<Problem>& problems, const Warnings& warnings, const FilePaths& paths) {
  return [&](JsonArray& array) {
    for (const Problem& problem : problems) {
      array.add(jsonOf(problem, paths));
    }
    for (const Problem& problem : warnings.problems) {
      array.add(jsonOf(warnings, problem, paths));
    }
  };
}

}  // namespace kiv
