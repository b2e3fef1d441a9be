#include "verify/manifest.h"

namespace kiv {
namespace {

std::string escaped(const std::string& name) {
  std::string text;
  for (const char c : name) {
    if (c == '\\') {
      text += "\\\\";
    } else if (c == '\n') {
      text += "\\n";
    } else if (c == '\r') {
      text += "\\r";
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace

std::string manifestText(const std::vector<DigestedFile>& files) {
  std::string lines;
  for (const DigestedFile& file : files) {
    const std::string name = escaped(file.name);
    lines += (name == file.name ? "" : "\\") + file.sha256 + "  " + name + "\n";
  }
  return lines;
}

}  // namespace kiv
