#include "apps/kivsys/output/outcome_json.h"

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/verification_json.h"

namespace kiv {
namespace {

const char* nameOf(Answer answer) {
  switch (answer) {
    case Answer::yes:
      return "yes";
    case Answer::no:
      return "no";
    case Answer::ok:
      break;
  }
  return "ok";
}

template <typename Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

Json pathJson(std::string_view name, std::string_view path) {
  return objectOf(
      {{"file", NativeSystem::toUtf8(std::string(name))}, {"path", NativeSystem::toUtf8(std::string(path))}});
}

void addNames(const PathTable& files, JsonArray& array) {
  for (std::size_t file = 0; file < files.size(); ++file) {
    array.add(Json(NativeSystem::toUtf8(std::string(files.name(file)))));
  }
}

void addPaths(const PathTable* files, JsonArray& array) {
  for (std::size_t file = 0; files != nullptr && file < files->size(); ++file) {
    array.add(pathJson(files->name(file), files->path(file)));
  }
}

}  // namespace

const char* nameOf(Icon icon) {
  switch (icon) {
    case Icon::information:
      return "information";
    case Icon::exclamation:
      return "exclamation";
    case Icon::critical:
      return "critical";
    case Icon::none:
      break;
  }
  return "none";
}

Json jsonOf(const std::vector<ShownMessage>& messages) {
  Json all = Json::array();
  for (const ShownMessage& shown : messages) {
    all.push_back({{"icon", nameOf(shown.message.icon)},
                   {"text", NativeSystem::toUtf8(shown.message.text)},
                   {"answer", nameOf(shown.answer)}});
  }
  return all;
}

LongObject jsonOf(const RunOutcome& outcome) {
  LongObject object(Json{{"end", outcome.normalEnd ? "normal" : "critical"},
                         {"messages", jsonOf(outcome.messages)},
                         {"consistency", orNull(outcome.consistency)},
                         {"multifile", orNull(outcome.multifile)},
                         {"files", outcome.files},
                         {"systems", orNull(outcome.systems)},
                         {"instruments", orNull(outcome.instruments)}});
  if (outcome.created != nullptr) {
    object.setArray("created", [&](JsonArray& array) { addNames(*outcome.created, array); });
  }
  if (!outcome.paths.isEmpty()) {
    object.setArray("paths", [&](JsonArray& array) {
      addPaths(outcome.paths.pages, array);
      addPaths(outcome.paths.written, array);
    });
  }
  if (outcome.corrections != nullptr && !outcome.corrections->tables.empty()) {
    object.plain()["corrected_by"] = jsonOf(*outcome.corrections);
  }
  if (outcome.verifies) {
    object.plain()["verified"] = outcome.verification ? toJson(*outcome.verification) : Json();
  }
  return object;
}

Json jsonOf(const PageCorrections& corrections) {
  Json tables = Json::array();
  for (const CorrectionTable& table : corrections.tables) {
    tables.push_back({{"file", NativeSystem::toUtf8(table.name)},
                      {"path", table.path.empty() ? Json() : Json(NativeSystem::toUtf8(table.path))},
                      {"sha256", table.sha256},
                      {"count", table.count}});
  }
  return {{"tables", tables}, {"ids", corrections.ids}, {"pages", corrections.pages.size()}};
}

Json pathsJson(const std::vector<FoundFile>& files) {
  Json paths = Json::array();
  for (const FoundFile& file : files) {
    paths.push_back(pathJson(file.name, file.path));
  }
  return paths;
}

std::string asLine(const Json& object) {
  return asText(object) + "\n";
}

Json textsJson(const std::vector<std::string>& texts) {
  Json all = Json::array();
  for (const std::string& text : texts) {
    all.push_back(NativeSystem::toUtf8(text));
  }
  return all;
}

}  // namespace kiv
