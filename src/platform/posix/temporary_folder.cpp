#include "platform/temporary_folder.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace kiv {

std::string makeTemporaryFolder() {
  std::error_code failure;
  std::string path = (std::filesystem::temp_directory_path(failure) / "kivsys-XXXXXX").string();
  return failure || ::mkdtemp(path.data()) == nullptr ? "" : path;
}

}  // namespace kiv
