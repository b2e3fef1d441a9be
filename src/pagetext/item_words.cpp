#include "pagetext/item_words.h"

#include <algorithm>

#include "mus/item.h"

namespace kiv {

const std::vector<ItemWord>& itemWords() {
  static const std::vector<ItemWord> words = {
      {"note", ItemType::note, {{"height", par::height}, {"duration", par::duration}}},
      {"rest",
       ItemType::rest,
       {{"height", par::height},
        {"kind", par::kind},
        {"form", par::restForm},
        {"duration", par::duration},
        {"cue", par::cuedInstrument}}},
      {"clef", ItemType::clef, {{"height", par::height}, {"kind", par::kind}}},
      {"staff", ItemType::staff, {{"size", par::size}, {"lines", par::lines}, {"instrument", par::instrument}}},
      {"shorttext", ItemType::shortText, {}},
      {"barline", ItemType::barline, {{"spans", par::spannedStaves}, {"kind", par::kind}}},
      {"text", ItemType::text, {}},
      {"countedtext", ItemType::countedText, {{"characters", par::textLength}}},
      {"keysignature", ItemType::keySignature, {{"key", par::key}, {"type", par::keyType}}},
      {"timesignature", ItemType::timeSignature, {{"upper", par::upperNumber}, {"lower", par::lowerNumber}}},
  };
  return words;
}

const ItemWord* itemWordOf(ItemType type) {
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
