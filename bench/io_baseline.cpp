// The I/O baseline: reads the inputs, and writes as many bytes to as many files, flushed and put in their places in the
// same way. It does nothing else.
//
// io_baseline read PAGE...                       reads the pages
// io_baseline convert RESULTS FOLDER PAGE...     reads the pages, and writes files as large as those of RESULTS into
//                                                FOLDER

#include <filesystem>
#include <iostream>
#include <string>

#include "platform/console/native_system.h"
#include "platform/file_buffer.h"

namespace {

using kiv::NativeSystem;

bool readAll(NativeSystem& files, int first, int argc, char** argv) {
  kiv::FileBuffer buffer;
  for (int i = first; i < argc; ++i) {
    if (!buffer.read(files, NativeSystem::coreName(argv[i]))) {
      std::cerr << "cannot read " << argv[i] << '\n';
      return false;
    }
  }
  return true;
}

bool writeAll(NativeSystem& files, const std::string& results, const std::string& folder) {
  for (const auto& entry : std::filesystem::directory_iterator(results)) {
    const std::string bytes(static_cast<std::size_t>(entry.file_size()), '\0');
    const std::string name = folder + "/" + entry.path().filename().string();
    if (const auto failure = files.replaceFile(NativeSystem::coreName(name), bytes)) {
      std::cerr << "cannot write " << name << ": " << *failure << '\n';
      return false;
    }
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  NativeSystem files;
  if (what == "read") {
    return readAll(files, 2, argc, argv) ? 0 : 1;
  }
  if (what == "convert" && argc > 4) {
    return readAll(files, 4, argc, argv) && writeAll(files, argv[2], argv[3]) ? 0 : 1;
  }
  std::cerr << "usage: io_baseline read PAGE... | io_baseline convert RESULTS FOLDER PAGE...\n";
  return 2;
}
