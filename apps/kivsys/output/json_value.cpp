#include "apps/kivsys/output/json_value.h"

namespace kiv {

std::string asText(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace kiv
