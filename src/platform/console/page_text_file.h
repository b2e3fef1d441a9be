#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// What a file that was given as a page is instead.
enum class NoPage {
  none,         ///< it may be a page, or a damaged one
  empty,        ///< it has no bytes
  listOfPages,  ///< its first line is the name of a page, or a record of a names file
  pageText,     ///< it has words of a page's text, as `kivsys dump` prints them
  otherText,    ///< nothing but characters, of another kind of text
};

/// What these bytes are, of which the first ones are enough.
NoPage noPageIn(std::string_view bytes);
/// What the file is; none when it cannot be read.
NoPage noPageAt(const std::string& file);

/// The sentence for people: "this is the text of a page, not a page"; "" when it may be a page.
std::string wordsOf(NoPage kind);

/// The command line that makes a page of the page's text in the file, not over the text itself.
std::string buildCommand(const std::string& file);

}  // namespace kiv
