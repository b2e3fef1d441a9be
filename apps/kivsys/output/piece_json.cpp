#include "apps/kivsys/output/piece_json.h"

#include <cstdint>

#include "platform/console/native_system.h"

namespace kiv {
namespace {

using Json = nlohmann::ordered_json;

template <typename Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

std::size_t countIn(const Json& value) {
  return value.get_ref<const Json::number_unsigned_t&>();  // any other number may be one that a count cannot hold
}

std::optional<std::size_t> countOrNone(const Json& value) {
  return value.is_null() ? std::nullopt : std::optional(countIn(value));
}

std::optional<bool> verdictOrNone(const Json& value) {
  return value.is_null() ? std::nullopt : std::optional(value.get<bool>());
}

/// An identifier; nullopt for a whole number that no instrument can have.
std::optional<std::int16_t> idIn(const Json& value) {
  const std::int64_t id = value.is_number_unsigned() ? static_cast<std::int64_t>(countIn(value))
                                                     : value.get_ref<const Json::number_integer_t&>();
  const bool exists = id >= INT16_MIN && id <= INT16_MAX;
  return exists ? std::optional(static_cast<std::int16_t>(id)) : std::nullopt;
}

Json namesJson(const InstrumentNames& names) {
  Json all = Json::array();
  for (const auto& [id, name] : names) {
    all.push_back({{"id", id}, {"name", name}});
  }
  return all;
}

Json badPagesJson(const std::vector<BadPage>& pages) {
  Json all = Json::array();
  for (const BadPage& page : pages) {
    all.push_back({{"files", page.files}, {"reason", page.reason}});
  }
  return all;
}

}  // namespace

Json toJson(const LibraryPiece& piece, const PieceFindings& findings) {
  return {{"folder", NativeSystem::toUtf8(piece.folder)},
          {"path", NativeSystem::toUtf8(piece.path)},
          {"prefix", NativeSystem::toUtf8(piece.prefix)},
          {"files", findings.files},
          {"pages", findings.pages},
          {"systems", orNull(findings.systems)},
          {"instruments", orNull(findings.instruments)},
          {"consistent", orNull(findings.consistent)},
          {"multifile", orNull(findings.multifile)},
          {"needs_conversion", orNull(findings.needsConversion())},
          {"problems", findings.problems},
          {"names", namesJson(findings.names)},
          {"bad_pages", badPagesJson(findings.badPages)}};
}

PieceFindings findingsIn(const Json& object) {
  PieceFindings findings;
  findings.pages = countIn(object.at("pages"));
  findings.systems = countOrNone(object.at("systems"));
  findings.instruments = countOrNone(object.at("instruments"));
  findings.consistent = verdictOrNone(object.at("consistent"));
  findings.multifile = verdictOrNone(object.at("multifile"));
  findings.problems = object.at("problems").get<std::vector<std::string>>();
  for (const Json& entry : object.at("names")) {
    if (const auto id = idIn(entry.at("id"))) {
      findings.names[*id] = entry.at("name").get<std::string>();
    }
  }
  return findings;
}

}  // namespace kiv
