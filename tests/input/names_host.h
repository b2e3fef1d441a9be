#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/fake_host.h"

namespace kiv::test {

/// A host that records in which order the names file is opened, closed, shown and deleted, and messages are shown.
class NamesHost : public FakeHost {
 public:
  static constexpr const char* namesFile = "C:\\KIV\\names.txt";

  std::vector<std::string> events;
  std::vector<std::string> prefetched;  ///< the files that were to be prefetched

  Answer show(const kiv::Message& message) override {
    events.emplace_back("message");
    return FakeHost::show(message);
  }

  bool showText(const std::string& name) override {
    events.emplace_back(name == namesFile ? "view" : "view of another file");
    return FakeHost::showText(name);
  }

  bool deleteFile(const std::string& name) override {
    events.emplace_back(name == namesFile ? "delete" : "delete of another file");
    return FakeHost::deleteFile(name);
  }

  std::unique_ptr<InputFile> openInput(const std::string& name) override {
    auto file = FakeHost::openInput(name);
    if (file == nullptr) {
      return nullptr;
    }
    if (name != namesFile) {
      return std::make_unique<Page>(name, prefetched);
    }
    events.emplace_back("open");
    return std::make_unique<Watched>(std::move(file), events);
  }

 private:
  class Watched : public InputFile {
   public:
    Watched(std::unique_ptr<InputFile> file, std::vector<std::string>& events)
        : file_(std::move(file)), events_(events) {}
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;
    ~Watched() override { events_.emplace_back("close"); }
    std::optional<std::size_t> read(std::span<char> buffer) override { return file_->read(buffer); }

   private:
    std::unique_ptr<InputFile> file_;
    std::vector<std::string>& events_;
  };

  class Page : public InputFile {
   public:
    Page(std::string name, std::vector<std::string>& prefetched) : name_(std::move(name)), prefetched_(prefetched) {}
    std::optional<std::size_t> read(std::span<char> /*buffer*/) override { return 0; }
    void prefetch() override { prefetched_.push_back(name_); }

   private:
    std::string name_;
    std::vector<std::string>& prefetched_;
  };
};

}  // namespace kiv::test
