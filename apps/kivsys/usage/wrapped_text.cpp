#include "apps/kivsys/usage/wrapped_text.h"

#include <sstream>

namespace kiv {

std::string wrapped(std::string_view text, std::size_t indent, std::size_t used) {
  std::istringstream words{std::string(text)};
  std::string result;
  std::size_t column = used;
  bool isFirstOfLine = true;
  for (std::string word; words >> word;) {
    if (!isFirstOfLine && column + 1 + word.size() > helpColumns) {
      result += "\n" + std::string(indent, ' ');
      column = indent;
      isFirstOfLine = true;
    }
    result += (isFirstOfLine ? "" : " ") + word;
    column += (isFirstOfLine ? 0 : 1) + word.size();
    isFirstOfLine = false;
  }
  return result + "\n";
}

}  // namespace kiv
