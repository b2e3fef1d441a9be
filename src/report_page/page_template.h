#pragma once

#include <map>
#include <string>
#include <string_view>

namespace kiv::report {

/// The parts of the two pages, as they were embedded when the program was built.
enum class PageKind { report, survey };

/// What a page consists of. All of it is the same in every page of its kind.
struct PageParts {
  std::string_view html;  ///< with "[[name]]" where the content of that name goes
  std::string_view style;
  std::string_view script;
};

PageParts partsOf(PageKind kind);

/// Replaces each "[[name]]" of the template by the content of that name, which is not looked at again. A name without
/// content stands for nothing.
std::string filledTemplate(std::string_view html, const std::map<std::string, std::string, std::less<>>& contents);

/// The content security policy that lets these run and nothing else.
std::string contentPolicy(std::string_view style, std::string_view script);

/// The complete page of a kind. The contents are HTML; style, script and policy are added.
std::string completePage(PageKind kind, std::map<std::string, std::string, std::less<>> contents);

}  // namespace kiv::report
