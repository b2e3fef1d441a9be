#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "apps/kivsys/survey/library_walk.h"
#include "survey/survey.h"

namespace kiv {

/// A piece and what was found out about it; what was not reached is null. Problems are UTF-8.
nlohmann::ordered_json toJson(const LibraryPiece& piece, const PieceFindings& findings);
/// The findings in such an object. Throws nlohmann::json::exception when it is none.
PieceFindings findingsIn(const nlohmann::ordered_json& object);

/// The object on one line.
std::string textOf(const nlohmann::ordered_json& object);

}  // namespace kiv
