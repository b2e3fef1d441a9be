#include "apps/companions/answers.h"

#include <algorithm>

#include "apps/companions/natural_order.h"

namespace kiv {
namespace {

constexpr const char* lineEnd = "\r\n";

}  // namespace

std::string namesFileText(std::vector<SelectedFile> files) {
  std::sort(files.begin(), files.end(),
            [](const SelectedFile& a, const SelectedFile& b) { return comesBefore(a.key, b.key); });
  const auto isSame = [](const SelectedFile& a, const SelectedFile& b) { return a.key == b.key; };
  files.erase(std::unique(files.begin(), files.end(), isSame), files.end());
  std::string text = "* selection of " + std::to_string(files.size()) + (files.size() == 1 ? " file" : " files");
  text += lineEnd;
  for (const SelectedFile& file : files) {
    text += file.name + " 1" + lineEnd;
  }
  return text;
}

std::string folderAnswerText(const std::optional<std::string>& folder) {
  return folder ? std::string("* chosen folder") + lineEnd + *folder + lineEnd
                : std::string("* no folder chosen") + lineEnd;
}

}  // namespace kiv
