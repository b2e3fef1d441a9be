#include "apps/kivsys/output/piece_json.h"

#include "platform/console/native_system.h"

namespace kiv {
namespace {

using Json = nlohmann::ordered_json;

template <typename Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

template <typename Value>
std::optional<Value> valueIn(const Json& value) {
  return value.is_null() ? std::nullopt : std::optional(value.get<Value>());
}

Json namesJson(const InstrumentNames& names) {
  Json all = Json::array();
  for (const auto& [id, name] : names) {
    all.push_back({{"id", id}, {"name", name}});
  }
  return all;
}

}  // namespace

Json toJson(const LibraryPiece& piece, const PieceFindings& findings) {
  return {{"folder", NativeSystem::toUtf8(piece.folder)},
          {"prefix", NativeSystem::toUtf8(piece.prefix)},
          {"pages", findings.pages},
          {"systems", orNull(findings.systems)},
          {"instruments", orNull(findings.instruments)},
          {"consistent", orNull(findings.consistent)},
          {"multifile", orNull(findings.multifile)},
          {"problems", findings.problems},
          {"names", namesJson(findings.names)}};
}

PieceFindings findingsIn(const Json& object) {
  PieceFindings findings;
  findings.pages = object.at("pages").get<std::size_t>();
  findings.systems = valueIn<std::size_t>(object.at("systems"));
  findings.instruments = valueIn<std::size_t>(object.at("instruments"));
  findings.consistent = valueIn<bool>(object.at("consistent"));
  findings.multifile = valueIn<bool>(object.at("multifile"));
  findings.problems = object.at("problems").get<std::vector<std::string>>();
  for (const Json& entry : object.at("names")) {
    findings.names[entry.at("id").get<std::int16_t>()] = entry.at("name").get<std::string>();
  }
  return findings;
}

std::string textOf(const Json& object) {
  return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace kiv
