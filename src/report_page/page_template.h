#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

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

/// What goes into a template: a text, or what appends one that is too long to be copied.
class TemplateContent {
 public:
  using Append = std::function<void(std::string& page)>;

  TemplateContent() = default;
  // NOLINTBEGIN(google-explicit-constructor): any text is a content
  TemplateContent(std::string text) : text_(std::move(text)) {}
  TemplateContent(std::string_view text) : text_(text) {}
  TemplateContent(const char* text) : text_(text) {}
  // NOLINTEND(google-explicit-constructor)
  explicit TemplateContent(Append append) : append_(std::move(append)) {}

  void appendTo(std::string& page) const;

 private:
  std::string text_;
  Append append_;  // empty for a text
};

/// The contents of a page by their names. All of them are HTML.
using TemplateContents = std::map<std::string, TemplateContent, std::less<>>;

/// Replaces each "[[name]]" of the template by the content of that name, which is not looked at again. A name without
/// content stands for nothing.
std::string filledTemplate(std::string_view html, const TemplateContents& contents);

/// The content security policy that lets these run and nothing else.
std::string contentPolicy(std::string_view style, std::string_view script);

/// The complete page of a kind. Style, script and policy are added to the contents.
std::string completePage(PageKind kind, TemplateContents contents);

}  // namespace kiv::report
