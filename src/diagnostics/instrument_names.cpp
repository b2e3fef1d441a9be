#include "diagnostics/instrument_names.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "base/number.h"

namespace kiv {
namespace {

constexpr std::size_t mostCandidates = 50;  // each is compared with every other one

char inLowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::vector<std::string_view> wordsOf(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t at = text.find_first_not_of(' '); at < text.size(); at = text.find_first_not_of(' ', at)) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    words.push_back(text.substr(at, end - at));
    at = end;
  }
  return words;
}

/// The letters and digits, in lower case.
std::string keyOf(std::string_view text) {
  std::string key;
  for (const char c : text) {
    if (isNameLetter(c) || isDigit(c)) {
      key += inLowerCase(c);
    }
  }
  return key;
}

bool isSubsequence(std::string_view key, std::string_view of) {
  for (const char c : of) {
    if (!key.empty() && key.front() == c) {
      key.remove_prefix(1);
    }
  }
  return key.empty();
}

/// The same as isShortFormOf for a key that is shorter than that of the name.
bool standsIn(std::string_view key, std::string_view name) {
  std::size_t fromWord = keyOf(name).size();
  const std::string whole = keyOf(name);
  const std::vector<std::string_view> words = wordsOf(name);
  return !key.empty() && std::any_of(words.rbegin(), words.rend(), [&](std::string_view word) {
    fromWord -= keyOf(word).size();
    const std::string_view rest = std::string_view(whole).substr(fromWord);
    return !rest.empty() && rest.front() == key.front() && isSubsequence(key, rest);
  });
}

/// Whether the short form shortens words, and does not just leave some out.
bool shortensWords(std::string_view text, std::string_view name) {
  const std::vector<std::string_view> of = wordsOf(name);
  const std::vector<std::string_view> words = wordsOf(text);
  return std::any_of(words.begin(), words.end(), [&](std::string_view word) {
    return std::none_of(of.begin(), of.end(), [&](std::string_view other) { return keyOf(other) == keyOf(word); });
  });
}

bool endsWithPeriod(std::string_view word) {
  return word.ends_with('.') && std::any_of(word.begin(), word.end(), isNameLetter);
}

}  // namespace

bool isNameLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80U;
}

bool isAbbreviation(std::string_view text) {
  const std::vector<std::string_view> words = wordsOf(text);
  if (std::any_of(words.begin(), words.end(), endsWithPeriod)) {
    return true;
  }
  constexpr std::string_view vowels = "aeiouy";
  const std::string first = words.empty() ? "" : keyOf(words.front());
  return first.size() > 1 && std::all_of(first.begin(), first.end(), [&](char c) {
           return c >= 'a' && c <= 'z' && vowels.find(c) == std::string_view::npos;
         });
}

bool isShortFormOf(std::string_view text, std::string_view name) {
  const std::string key = keyOf(text);
  return key.size() < keyOf(name).size() && standsIn(key, name);
}

void NameCandidates::add(const std::string& text, NamePlace place) {
  const auto known = std::find_if(candidates_.begin(), candidates_.end(),
                                  [&](const Candidate& c) { return c.text == text && c.place == place; });
  if (known != candidates_.end()) {
    ++known->count;
  } else if (candidates_.size() < mostCandidates) {
    candidates_.push_back({text, keyOf(text), place, 1});
  }
}

std::vector<NameCandidates::Candidate> NameCandidates::inBestPlace() const {
  std::vector<Candidate> chosen;
  for (const NamePlace place : {NamePlace::besideStaff, NamePlace::betweenStaves}) {
    std::copy_if(candidates_.begin(), candidates_.end(), std::back_inserter(chosen),
                 [&](const Candidate& candidate) { return candidate.place == place; });
    if (!chosen.empty()) {
      break;
    }
  }
  return chosen;
}

InstrumentName NameCandidates::best() const {
  const std::vector<Candidate> all = inBestPlace();
  const auto isFormOf = [](const Candidate& form, const Candidate& name) {
    return form.key == name.key || (form.key.size() < name.key.size() && standsIn(form.key, name.text));
  };
  const auto rankOf = [&](const Candidate& name) {
    std::size_t support = 0;
    for (const Candidate& form : all) {
      support += isFormOf(form, name) ? form.count : 0;
    }
    return std::tuple(support, !isAbbreviation(name.text), name.key.size());
  };
  const Candidate* head = nullptr;
  for (const Candidate& candidate : all) {
    head = head == nullptr || rankOf(candidate) > rankOf(*head) ? &candidate : head;
  }
  if (head == nullptr) {
    return {};
  }
  if (isAbbreviation(head->text)) {
    return {"", head->text};
  }
  const Candidate* shortened = nullptr;
  for (const Candidate& candidate : all) {
    const bool isForm = candidate.key != head->key && isFormOf(candidate, *head);
    if (isForm && shortensWords(candidate.text, head->text) &&
        (shortened == nullptr || candidate.count > shortened->count)) {
      shortened = &candidate;
    }
  }
  return {head->text, shortened == nullptr ? "" : shortened->text};
}

bool NameCandidates::agree() const {
  const std::string name = best().shown();
  const std::vector<Candidate> all = inBestPlace();
  return std::all_of(all.begin(), all.end(), [&](const Candidate& candidate) {
    return candidate.key == keyOf(name) || isShortFormOf(candidate.text, name);
  });
}

}  // namespace kiv
