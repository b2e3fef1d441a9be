#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/sha256.h"
#include "verify/page_items.h"

namespace kiv::proof {

/// What is kept of a file that was read.
struct FileFacts {
  std::size_t hash = 0;                ///< of its bytes
  std::optional<Sha256Digest> digest;  ///< nullopt of an empty file, and of one that cannot be read
  bool isRead = false;

  /// Notes what the file holds when it is read first. False when it has held something else.
  bool note(std::string_view bytes);
};

/// What is kept of an input that was read.
struct InputFacts : FileFacts {
  std::uint32_t items = 0;
  std::vector<float> numberStaves;  ///< the staves of its instrument ids, in their order

  /// The number of instrument ids on a staff.
  std::ptrdiff_t numbersOn(float staff) const;
};

/// The inputs of a conversion: their names, each once, and what is kept of them.
class InputFiles {
 public:
  InputFiles() = default;
  /// Full names in the order of selection; one may be named more than once.
  explicit InputFiles(std::vector<std::string> names);

  /// All names in the order of selection. They stay where they are.
  const std::vector<std::string>& selection() const { return names_; }
  /// The number of different files.
  std::size_t size() const { return sorted_.size(); }
  /// A file by its index, in the order of the names.
  const std::string& name(std::size_t index) const { return names_[sorted_[index]]; }
  InputFacts& facts(std::size_t index) { return facts_[index]; }
  const InputFacts& facts(std::size_t index) const { return facts_[index]; }
  /// The index of a file; nullopt when it is no input.
  std::optional<std::size_t> find(std::string_view name) const;
  bool contains(std::string_view name) const { return find(name).has_value(); }

 private:
  std::vector<std::string> names_;
  std::vector<std::uint32_t> sorted_;  // indices of the names
  std::vector<InputFacts> facts_;      // in their order
};

}  // namespace kiv::proof
