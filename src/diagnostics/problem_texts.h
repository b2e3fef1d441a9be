#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kiv {

/// What users read about a message: each is one or two plain sentences.
struct ProblemText {
  std::string_view code;
  std::string_view title;    ///< a phrase: "Staff without an instrument id"
  std::string_view meaning;  ///< what was found
  std::string_view effect;   ///< why it matters
  std::string_view remedy;   ///< what to do about it
};

/// The texts of all codes, in the order of docs/problems.md.
std::span<const ProblemText> problemTexts();

/// The texts of a code, about an item of a page or about something else; those of code::other when there are none.
const ProblemText& problemTextOf(std::string_view code, bool isAboutItem = false);

/// The text of docs/problems.md.
std::string problemsDocument();

}  // namespace kiv
