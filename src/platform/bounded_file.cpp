#include "platform/bounded_file.h"

#include "platform/file_buffer.h"

namespace kiv {

bool isLarger(const InputFile& file, std::size_t limit) {
  const auto size = file.size();
  return size && *size > limit;
}

BoundedContent readBounded(Files& files, const std::string& name, std::size_t limit) {
  const auto file = files.openInput(name);
  if (!file) {
    return {};
  }
  if (isLarger(*file, limit)) {
    return {std::nullopt, true};
  }
  FileBuffer buffer;
  const auto content = buffer.read(*file, limit + 1);  // it may have grown, and not every file knows its size
  if (!content) {
    return {};
  }
  if (content->size() > limit) {
    return {std::nullopt, true};
  }
  return {std::string(*content), false};
}

std::string tooLarge(std::size_t limit, std::string_view kind) {
  return "has more than " + std::to_string(limit) + " bytes, the limit for " + std::string(kind);
}

}  // namespace kiv
