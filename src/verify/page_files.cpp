#include "verify/page_files.h"

#include <algorithm>
#include <map>
#include <numeric>
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

std::string nameWithoutFolder(Machine& machine, const std::string& file) {
  return file.substr(lastBackslash(machine, file) + 1);
}

/// The name of a page that several files make up: that of any of them, without its letter.
std::string nameWithoutLetter(const std::string& name) {
  return std::string(name).erase(formOf(name).end - 1, 1);
}

/// The page of a file alone, with the name that the report has for it.
PageFiles singleFile(Machine& machine, const std::string& file) {
  const std::string name = nameWithoutFolder(machine, file);
  PageFiles page;
  page.folder = file.substr(0, file.size() - name.size());
  page.name = formOf(name).letters > 1 ? file : name;
  page.files = {file};
  return page;
}

}  // namespace

SelectedPages::SelectedPages(Machine& machine, const std::vector<std::string>& inputs)
    : machine_(machine), inputs_(inputs) {
  std::map<std::string, std::uint32_t> lettered;  // pages by the names without the letter
  std::vector<std::uint32_t> pages;               // of each file
  std::uint32_t count = 0;
  for (const std::string& file : inputs) {
    const std::string name = nameWithoutFolder(machine, file);
    const NameForm form = formOf(name);
    if (!form.isValid || !form.hasNumber) {
      const bool lacksNumber = form.isValid && !form.hasNumber;
      failure_ = Finding{file, 0, lacksNumber ? "has a name without a number" : "has no name of a page file"};
      return;
    }
    const std::uint32_t page =
        form.letters == 1 ? lettered.emplace(nameWithoutLetter(name), count).first->second : count;
    pages.push_back(page);
    count = std::max(count, page + 1);
  }
  divide(pages, count);
}

/// Sorts the files by their pages, of which there are count.
void SelectedPages::divide(const std::vector<std::uint32_t>& pages, std::size_t count) {
  files_.resize(pages.size());
  std::iota(files_.begin(), files_.end(), 0U);
  std::stable_sort(files_.begin(), files_.end(), [&](std::uint32_t a, std::uint32_t b) { return pages[a] < pages[b]; });
  ends_.resize(count);
  for (std::size_t i = 0; i < files_.size(); ++i) {
    ends_[pages[files_[i]]] = static_cast<std::uint32_t>(i + 1);
  }
}

PageFiles SelectedPages::page(std::size_t index) const {
  const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
  const std::string& first = inputs_[files_[begin]];
  if (ends_[index] - begin == 1) {
    return singleFile(machine_, first);
  }
  PageFiles page;
  const std::string firstName = nameWithoutFolder(machine_, first);
  page.name = nameWithoutLetter(firstName);
  page.folder = first.substr(0, first.size() - firstName.size());
  for (std::size_t i = begin; i < ends_[index]; ++i) {
    const std::string& file = inputs_[files_[i]];
    const std::string name = nameWithoutFolder(machine_, file);
    page.letters += name[formOf(name).end - 1];
    page.files.push_back(file);
  }
  return page;
}

}  // namespace kiv::proof
