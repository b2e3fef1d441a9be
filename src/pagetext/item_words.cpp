#include "pagetext/item_words.h"

#include <algorithm>

#include "mus/format.h"

namespace kiv {

const std::vector<ItemWord>& itemWords() {
  static const std::vector<ItemWord> words = {
      {"note", type::note, {{"height", par::height}, {"duration", par::duration}}},
      {"rest",
       type::rest,
       {{"height", par::height},
        {"kind", par::kind},
        {"form", par::restForm},
        {"duration", par::duration},
        {"cue", par::cuedInstrument}}},
      {"clef", type::clef, {{"height", par::height}, {"kind", par::kind}}},
      {"staff", type::staff, {{"size", par::size}, {"lines", par::lines}, {"instrument", par::instrument}}},
      {"shorttext", type::shortText, {}},
      {"barline", type::barline, {{"spans", par::spannedStaves}, {"kind", par::kind}}},
      {"text", type::text, {}},
      {"countedtext", type::countedText, {{"characters", par::textLength}}},
      {"keysignature", type::keySignature, {{"key", par::key}, {"type", par::keyType}}},
      {"timesignature", type::timeSignature, {{"upper", par::upperNumber}, {"lower", par::lowerNumber}}},
  };
  return words;
}

const ItemWord* itemWordOf(float type) {
  const auto& words = itemWords();
  const auto found = std::find_if(words.begin(), words.end(), [&](const ItemWord& w) { return w.type == type; });
  return found == words.end() ? nullptr : &*found;
}

const ItemWord* itemWordNamed(std::string_view word) {
  const auto& words = itemWords();
  const auto found = std::find_if(words.begin(), words.end(), [&](const ItemWord& w) { return w.word == word; });
  return found == words.end() ? nullptr : &*found;
}

}  // namespace kiv
