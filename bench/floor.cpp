// What no run can do without: reads the inputs, and writes as many bytes to as many files, flushed and put in their
// places in the same way. It does nothing else.
//
// floor read PAGE...                       reads the pages
// floor convert RESULTS FOLDER PAGE...     reads the pages, and writes files as large as those of RESULTS into FOLDER

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "platform/console/native_system.h"
#include "platform/file_buffer.h"

namespace {

/// The native files, and nobody to talk to.
class Silent : public kiv::NativeSystem {
 public:
  kiv::Answer message(kiv::Icon /*icon*/, std::string_view /*text*/, kiv::Buttons /*buttons*/) override {
    return kiv::Answer::ok;
  }
  bool showText(const std::string& /*name*/) override { return true; }
  void setPointer(kiv::Pointer /*pointer*/) override {}
  void processEvents() override {}
  void showProgress(int /*done*/, int /*all*/, std::string_view /*plural*/) override {}
};

bool readAll(Silent& host, int first, int argc, char** argv) {
  kiv::FileRoom room;
  for (int i = first; i < argc; ++i) {
    if (!room.read(host, Silent::coreName(argv[i]))) {
      std::cerr << "cannot read " << argv[i] << '\n';
      return false;
    }
  }
  return true;
}

bool writeAll(Silent& host, const std::string& results, const std::string& folder) {
  for (const auto& entry : std::filesystem::directory_iterator(results)) {
    const std::string bytes(static_cast<std::size_t>(entry.file_size()), '\0');
    const std::string name = folder + "/" + entry.path().filename().string();
    if (const auto failure = host.replaceFile(Silent::coreName(name), bytes)) {
      std::cerr << "cannot write " << name << ": " << *failure << '\n';
      return false;
    }
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  Silent host;
  if (what == "read") {
    return readAll(host, 2, argc, argv) ? 0 : 1;
  }
  if (what == "convert" && argc > 4) {
    return readAll(host, 4, argc, argv) && writeAll(host, argv[2], argv[3]) ? 0 : 1;
  }
  std::cerr << "usage: floor read PAGE... | floor convert RESULTS FOLDER PAGE...\n";
  return 2;
}
