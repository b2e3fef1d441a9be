#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {

/// Is given what a conversion writes, while it writes it, so that nobody needs to read the results again.
class ConversionObserver {
 public:
  ConversionObserver() = default;
  ConversionObserver(const ConversionObserver&) = delete;
  ConversionObserver& operator=(const ConversionObserver&) = delete;
  virtual ~ConversionObserver() = default;

  /// The bytes of a system's result, full name, have been handed over to be written; the results before it are in
  /// their places. Whether this one gets there is known when the next one comes or the conversion ends normally. The
  /// bytes are valid during the call.
  virtual void resultHandedOver(std::int16_t system, const std::string& name, std::string_view bytes) = 0;
};

}  // namespace kiv
