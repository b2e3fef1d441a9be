#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A page that a list names.
struct ListedPage {
  std::string name;      ///< without blanks at its end, and without the " 1" of a record
  std::size_t line = 0;  ///< counted from 1
  bool isRecord = true;  ///< of a names file; else a plain path
  std::string whole{};   ///< the whole line of a plain path

  bool operator==(const ListedPage&) const = default;
};

/// What is wrong with a line of a list.
struct ListError {
  std::size_t line = 0;
  std::string text;

  bool operator==(const ListError&) const = default;
};

/// The pages of a names file, or of a plain list.
struct NamesList {
  std::vector<ListedPage> pages;
  std::vector<ListedPage> comments;  ///< lines that are comments unless the list is a plain one, and has such a file
  std::vector<ListError> errors;
};

/// Reads a list of pages. Lines that are empty, or begin with a blank or with "*", are comments. The others are records
/// that end in " 1", as in a names file, or plain paths; a list of both is an error. Blanks at the end of a record do
/// not count. Lines end with CR LF, LF or CR.
NamesList readNamesList(std::string_view text);

}  // namespace kiv
