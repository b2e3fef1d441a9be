#include "diagnostics/clef_word.h"

#include <map>

#include "base/number.h"

namespace kiv {

std::string clefWord(const ClefForm& clef) {
  constexpr float alto = 2;
  static const std::map<float, std::string> words = {{0.0F, "treble"}, {1.0F, "bass"}, {alto, "alto"}};
  constexpr float lineAbove = 2;
  if (clef == ClefForm{alto, lineAbove}) {
    return "tenor";
  }
  const auto word = words.find(clef.kind);
  const std::string moved = clef.height == 0 ? "" : (clef.height > 0 ? "+" : "") + generalNumber(clef.height);
  return (word == words.end() ? "kind " + generalNumber(clef.kind) + (moved.empty() ? "" : " ") : word->second) + moved;
}

}  // namespace kiv
