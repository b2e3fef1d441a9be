#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "tests/support/fake_host.h"

namespace kiv::test {

/// What is odd about a file.
struct OddFile {
  std::string bytes;
  std::optional<std::uint64_t> size = std::nullopt;  ///< that it is said to have
  int goodReads = INT_MAX;                           ///< the reads after these fail
};

/// A host with one file that is odd to read.
class HostWithOddFile : public FakeHost {
 public:
  HostWithOddFile(std::string name, OddFile file) : name_(std::move(name)), file_(std::move(file)) {}

  std::unique_ptr<InputFile> openInput(const std::string& name) override {
    return name == name_ ? std::make_unique<Input>(file_) : FakeHost::openInput(name);
  }

 private:
  class Input : public InputFile {
   public:
    explicit Input(OddFile file) : file_(std::move(file)) {}

    std::optional<std::size_t> read(std::span<char> buffer) override {
      if (file_.goodReads-- == 0) {
        return std::nullopt;
      }
      const std::size_t count = file_.bytes.copy(buffer.data(), buffer.size());
      file_.bytes.erase(0, count);
      return count;
    }
    std::optional<std::uint64_t> size() const override { return file_.size; }

   private:
    OddFile file_;
  };

  std::string name_;
  OddFile file_;
};

}  // namespace kiv::test
