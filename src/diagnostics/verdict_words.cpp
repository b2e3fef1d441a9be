#include "diagnostics/verdict_words.h"

#include "base/counted.h"

namespace kiv {

std::string unreadableWords(std::size_t pages) {
  return counted(pages, "page", "pages") + " cannot be read";
}

std::string problemWords(std::size_t problems) {
  return counted(problems, "problem", "problems") + " must be corrected first";
}

}  // namespace kiv
