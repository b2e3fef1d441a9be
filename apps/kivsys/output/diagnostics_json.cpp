#include "apps/kivsys/output/diagnostics_json.h"

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

Json itemOf(const std::optional<ItemPlace>& place) {
  return place ? Json(place->item) : Json();
}

Json offsetOf(const std::optional<ItemPlace>& place) {
  return place ? Json(place->offset) : Json();
}

Json pathOrNull(const std::optional<std::string>& name, const FilePaths& paths) {
  const auto path = name ? paths.find(*name) : std::nullopt;
  return path ? Json(NativeSystem::toUtf8(std::string(*path))) : Json();
}

Json nameOrNull(const Layouts& layouts, std::int16_t instrument) {
  const auto name = layouts.names.find(instrument);
  return name == layouts.names.end() ? Json() : Json(NativeSystem::toUtf8(name->second));
}

Json fileJson(const Layouts& layouts, std::uint32_t file) {
  return NativeSystem::toUtf8(std::string(layouts.files[file]));
}

}  // namespace

void RangesJson::add(int number) {
  if (last_ && *last_ == number - 1) {
    last_ = number;
    return;
  }
  finish();
  first_ = number;
  last_ = number;
}

void RangesJson::finish() {
  if (last_) {
    array_.add(objectOf({{"first", first_}, {"last", *last_}}));
  }
  last_.reset();
}

Json numberJson(double number) {
  constexpr double exact = 9007199254740992.0;
  return std::fabs(number) < exact && number == std::trunc(number) ? Json(static_cast<std::int64_t>(number))
                                                                   : Json(number);
}

Json jsonOf(const Problem& problem, const FilePaths& paths) {
  Json object = {{"code", problem.code},
                 {"severity", nameOf(problem.severity)},
                 {"message", problem.message},
                 {"file", orNull(problem.file)}};
  if (!paths.isEmpty()) {
    object["path"] = pathOrNull(problem.file, paths);
  }
  object["system"] = problem.system ? Json(*problem.system) : Json();
  object["staff"] = orNull(problem.staff);
  object["instrument"] = orNull(problem.instrument);
  if (problem.bar) {
    object["bar"] = *problem.bar;
  }
  object["item"] = itemOf(problem.place);
  object["offset"] = offsetOf(problem.place);
  object["repeats"] = problem.repeats;
  return object;
}

Json jsonOf(const Layouts& layouts, const Deviation& deviation) {
  return objectOf({{"kind", nameOf(deviation.kind)},
                   {"instrument", deviation.instrument},
                   {"name", nameOrNull(layouts, deviation.instrument)},
                   {"system", deviation.system},
                   {"file", deviation.file ? fileJson(layouts, *deviation.file) : Json()},
                   {"staff", orNull(deviation.staff)},
                   {"item", itemOf(deviation.place)},
                   {"offset", offsetOf(deviation.place)}});
}

LongObject jsonOf(const Layouts& layouts, const LayoutClass& layout) {
  LongObject object(Json{{"layout", layout.label}});
  object.setArray("systems", [&](JsonArray& array) {
    RangesJson ranges(array);
    for (const std::size_t s : layout.systems) {
      ranges.add(layouts.systems[s].number);
    }
    ranges.finish();
  });
  object.plain()["instruments"] = layout.instruments;
  return object;
}

AddElements elementsOf(const Layouts& layouts) {
  return [&](JsonArray& array) {
    for (const LayoutClass& layout : layouts.classes) {
      LongObject object = jsonOf(layouts, layout);
      object.setArray("deviations", [&](JsonArray& deviations) {
        for (const Deviation& deviation : layout.deviations) {
          deviations.add(jsonOf(layouts, deviation));
        }
      });
      array.add(object);
    }
  };
}

}  // namespace kiv
