#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "mus/page_walker.h"

namespace kiv {

/// The text of the item that the walk found, without blanks around it; nullopt when it has no letter.
std::optional<std::string> textWithLetter(const PageWalker& page);

/// Gives a text item that the walk found to the staff that it names: the last one before it in the file with its
/// number, if the text stands left of it and no text has named it. A name is the first text with a letter in it.
template <typename Staff>
void addName(const PageWalker& page, std::vector<Staff>& staves) {
  const auto staff =
      std::find_if(staves.rbegin(), staves.rend(), [&](const Staff& s) { return s.number == page.par(par::staff); });
  if (staff == staves.rend() || !staff->name.empty() || !(page.par(par::position) < staff->position)) {
    return;
  }
  if (auto text = textWithLetter(page)) {
    staff->name = std::move(*text);
  }
}

}  // namespace kiv
