#include "verify/page_files.h"

#include <map>
#include <string_view>

#include "platform/separators.h"

namespace kiv::proof {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isLetter(char c) {
  return c >= 'A' && c <= 'Z';
}
bool isNameCharacter(char c) {
  return isLetter(c) || c == '-' || c == '$' || c == '_';
}

/// Moves at to the first character that is not of a class. Returns how many it has passed.
template <typename Class>
std::size_t pass(std::string_view text, std::size_t& at, Class isOfClass) {
  const std::size_t start = at;
  while (at < text.size() && isOfClass(text[at])) {
    ++at;
  }
  return at - start;
}

/// What the name of a page file, without folder, is made of.
struct NameForm {
  bool isValid = false;
  bool hasNumber = false;
  std::size_t letters = 0;  ///< after the number
  std::size_t end = 0;      ///< of these letters; the suffix begins here
};

/// A name is made of a first number if there is a second, of letters and some other characters, of the number, and of
/// page letters. Up to its first period nothing else stands in it.
NameForm formOf(std::string_view name) {
  const std::string_view stem = name.substr(0, name.find('.'));
  NameForm form;
  form.end = stem.size();
  std::size_t at = 0;
  const std::size_t first = pass(stem, at, isDigit);
  const std::size_t afterFirst = at;
  const std::size_t characters = pass(stem, at, isNameCharacter);
  const std::size_t second = pass(stem, at, isDigit);
  form.hasNumber = first + second > 0;
  if (first > 0 && second == 0) {
    at = afterFirst;
  }
  form.letters = form.hasNumber ? pass(stem, at, isLetter) : 0;
  // Letters that no number precedes would be both name and page letters.
  const bool endsWithLetter = characters > 0 && isLetter(stem.back());
  form.isValid = at == stem.size() && (form.hasNumber || !endsWithLetter);
  return form;
}

/// The page of a file alone, with the name that the report has for it.
PageFiles singleFile(const std::string& file, std::size_t folder, std::size_t letters) {
  PageFiles page;
  page.folder = file.substr(0, folder);
  page.name = letters > 1 ? file : file.substr(folder);
  page.files = {file};
  return page;
}

}  // namespace

SelectedPages pagesOf(Machine& machine, const std::vector<std::string>& inputs) {
  SelectedPages selected;
  std::map<std::string, std::size_t> lettered;  // by the names without the letter
  for (const std::string& file : inputs) {
    const std::size_t folder = lastBackslash(machine, file) + 1;
    const std::string name = file.substr(folder);
    const NameForm form = formOf(name);
    if (!form.isValid || !form.hasNumber) {
      const bool lacksNumber = form.isValid && !form.hasNumber;
      selected.failure = Finding{file, 0, lacksNumber ? "has a name without a number" : "has no name of a page file"};
      return selected;
    }
    if (form.letters != 1) {
      selected.pages.push_back(singleFile(file, folder, form.letters));
      continue;
    }
    const std::string pageName = std::string(name).erase(form.end - 1, 1);
    const auto [known, isNew] = lettered.emplace(pageName, selected.pages.size());
    if (isNew) {
      selected.pages.push_back({pageName, "", file.substr(0, folder), {}});
    }
    PageFiles& page = selected.pages[known->second];
    page.letters += name[form.end - 1];
    page.files.push_back(file);
  }
  for (PageFiles& page : selected.pages) {
    if (page.letters.size() == 1) {
      page = singleFile(page.files.front(), page.folder.size(), 1);
    }
  }
  return selected;
}

}  // namespace kiv::proof
