#pragma once

#include <cstdint>
#include <string>

#include "platform/files.h"

namespace kiv {

/// Is given what a conversion writes, while it writes it, so that nobody needs to read the results again.
class ConversionObserver {
 public:
  ConversionObserver() = default;
  ConversionObserver(const ConversionObserver&) = delete;
  ConversionObserver& operator=(const ConversionObserver&) = delete;
  virtual ~ConversionObserver() = default;

  /// The bytes of a system's result, full name, have been handed over to be written. Whether it gets to its place is
  /// known when the conversion has ended.
  virtual void resultHandedOver(std::int16_t system, const std::string& name, const SharedBytes& bytes) = 0;
};

}  // namespace kiv
