#include "apps/kivsys/output/diagnostics_json.h"

#include <algorithm>
#include <cmath>

#include <nlohmann/json.hpp>

namespace kiv {
namespace {

Json orNull(const std::optional<std::string>& text) {
  return text ? Json(NativeSystem::toUtf8(*text)) : Json();
}

Json orNull(const std::optional<double>& number) {
  return number ? numberJson(*number) : Json();
}

/// The systems as runs of numbers that follow one another.
Json ranges(const Layouts& layouts, const LayoutClass& layout) {
  Json all = Json::array();
  for (const std::size_t s : layout.systems) {
    const int number = layouts.systems[s].number;
    if (!all.empty() && all.back()["last"] == number - 1) {
      all.back()["last"] = number;
    } else {
      all.push_back({{"first", number}, {"last", number}});
    }
  }
  return all;
}

void addPlace(Json& object, const std::optional<ItemPlace>& place) {
  object["item"] = place ? Json(place->item) : Json();
  object["offset"] = place ? Json(place->offset) : Json();
}

Json pathOrNull(const std::optional<std::string>& name, const std::vector<FoundFile>& paths) {
  const auto found =
      std::find_if(paths.begin(), paths.end(), [&](const FoundFile& file) { return name && file.name == *name; });
  return found == paths.end() ? Json() : Json(NativeSystem::toUtf8(found->path));
}

Json nameOrNull(const Layouts& layouts, std::int16_t instrument) {
  const auto name = layouts.names.find(instrument);
  return name == layouts.names.end() ? Json() : Json(NativeSystem::toUtf8(name->second));
}

Json fileJson(const Layouts& layouts, std::uint32_t file) {
  return NativeSystem::toUtf8(std::string(layouts.files[file]));
}

}  // namespace

Json numberJson(double number) {
  constexpr double exact = 9007199254740992.0;
  return std::fabs(number) < exact && number == std::trunc(number) ? Json(static_cast<std::int64_t>(number))
                                                                   : Json(number);
}

Json jsonOf(const Problem& problem, const std::vector<FoundFile>& paths) {
  Json object = {{"code", problem.code},
                 {"severity", nameOf(problem.severity)},
                 {"message", problem.message},
                 {"file", orNull(problem.file)}};
  if (!paths.empty()) {
    object["path"] = pathOrNull(problem.file, paths);
  }
  object["system"] = problem.system ? Json(*problem.system) : Json();
  object["staff"] = orNull(problem.staff);
  object["instrument"] = orNull(problem.instrument);
  if (problem.bar) {
    object["bar"] = *problem.bar;
  }
  addPlace(object, problem.place);
  object["repeats"] = problem.repeats;
  return object;
}

Json jsonOf(const Layouts& layouts, const Deviation& deviation) {
  Json object = {{"kind", nameOf(deviation.kind)},
                 {"instrument", deviation.instrument},
                 {"name", nameOrNull(layouts, deviation.instrument)},
                 {"system", deviation.system},
                 {"file", deviation.file ? fileJson(layouts, *deviation.file) : Json()},
                 {"staff", orNull(deviation.staff)}};
  addPlace(object, deviation.place);
  return object;
}

Json jsonOf(const Layouts& layouts, const LayoutClass& layout) {
  return {{"layout", layout.label}, {"systems", ranges(layouts, layout)}, {"instruments", layout.instruments}};
}

Json jsonOf(const Layouts& layouts) {
  Json all = Json::array();
  for (const LayoutClass& layout : layouts.classes) {
    Json object = jsonOf(layouts, layout);
    Json deviations = Json::array();
    for (const Deviation& deviation : layout.deviations) {
      deviations.push_back(jsonOf(layouts, deviation));
    }
    object["deviations"] = deviations;
    all.push_back(object);
  }
  return all;
}

}  // namespace kiv
