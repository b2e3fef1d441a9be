#include "diagnostics/first_text.h"

#include "diagnostics/instrument_names.h"

namespace kiv {

std::optional<std::string> textWithLetter(const PageWalker& page) {
  Item item;
  page.decode(item);
  const std::string& text = item.text;
  if (std::none_of(text.begin(), text.end(), isNameLetter)) {
    return std::nullopt;
  }
  const std::size_t first = text.find_first_not_of(' ');
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace kiv
