#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "apps/kivsys/survey/library_walk.h"
#include "survey/survey.h"

namespace kiv {

/// A piece and its findings; what the analysis did not reach is null. Problems and names are UTF-8.
nlohmann::ordered_json toJson(const LibraryPiece& piece, const PieceFindings& findings);
/// The findings in such an object, but for its files and bad pages. Throws nlohmann::json::exception for another
/// object.
PieceFindings findingsIn(const nlohmann::ordered_json& object);

}  // namespace kiv
