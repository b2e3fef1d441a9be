#include "platform/prepared_file.h"

namespace kiv {

std::optional<std::string> PreparedFile::prepare(const FileDestination& destination, std::string_view bytes) {
  discard();
  auto failure = fill(destination, bytes);
  if (failure) {
    discard();
  }
  return failure;
}

std::optional<std::string> PreparedFile::moveToPlace(Existing existing) {
  if (auto failure = move(path_, target_, existing)) {
    discard();
    return failure;
  }
  path_.clear();
  return std::nullopt;
}

void PreparedFile::discard() {
  if (!path_.empty()) {
    remove(path_);
    path_.clear();
  }
}

}  // namespace kiv
