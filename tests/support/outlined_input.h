#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/memory/memory_input.h"

namespace kiv::test {

/// A file in memory that comes with an outline, or with null.
class OutlinedInput : public MemoryInput {
 public:
  OutlinedInput(const std::string& bytes, std::unique_ptr<FileOutline> outline)
      : MemoryInput(std::make_shared<const std::string>(bytes)), outline_(std::move(outline)) {}
  std::unique_ptr<FileOutline> releaseOutline() override { return std::move(outline_); }

 private:
  std::unique_ptr<FileOutline> outline_;
};

}  // namespace kiv::test
