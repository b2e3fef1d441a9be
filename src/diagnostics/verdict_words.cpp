#include "diagnostics/verdict_words.h"

namespace kiv {
namespace {

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
  return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

}  // namespace

std::string unreadableWords(std::size_t pages) {
  return counted(pages, "page", "pages") + " cannot be read";
}

std::string problemWords(std::size_t problems) {
  return counted(problems, "problem", "problems") + " must be corrected first";
}

}  // namespace kiv
