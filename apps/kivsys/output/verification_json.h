#pragma once

#include <nlohmann/json.hpp>

#include "verify/verify.h"

namespace kiv {

/// The verification as an object: "proved", "findings", "counts", "files".
nlohmann::ordered_json toJson(const proof::Verification& verification);

}  // namespace kiv
