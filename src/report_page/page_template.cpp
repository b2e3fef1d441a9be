#include "report_page/page_template.h"

#include <array>
#include <cstdint>
#include <utility>

#include "base/sha256.h"
#include "report_page/embedded_pages.h"

namespace kiv::report {
namespace {

std::uint32_t digitOf(char hexadecimal) {
  constexpr std::uint32_t ten = 10;
  return static_cast<std::uint32_t>(hexadecimal <= '9' ? hexadecimal - '0' : hexadecimal - 'a') +
         (hexadecimal <= '9' ? 0U : ten);
}

/// Base64 of the bytes that the hexadecimal digits are.
std::string base64(std::string_view hexadecimal) {
  constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  constexpr unsigned bitsPerCharacter = 6;
  constexpr unsigned bitsPerDigit = 4;
  constexpr std::uint32_t lowestSix = 0x3F;
  std::string text;
  std::uint32_t bits = 0;
  unsigned count = 0;
  for (const char digit : hexadecimal) {
    bits = bits << bitsPerDigit | digitOf(digit);
    count += bitsPerDigit;
    if (count >= bitsPerCharacter) {
      count -= bitsPerCharacter;
      text += alphabet[bits >> count & lowestSix];
    }
  }
  if (count > 0) {
    text += alphabet[bits << (bitsPerCharacter - count) & lowestSix];
  }
  constexpr std::size_t group = 4;
  text.append((group - text.size() % group) % group, '=');
  return text;
}

std::string sourceOf(std::string_view text) {
  return "'sha256-" + base64(sha256(text)) + "'";
}

}  // namespace

PageParts partsOf(PageKind kind) {
  if (kind == PageKind::survey) {
    return {embedded::survey_html, embedded::survey_css, embedded::survey_js};
  }
  return {embedded::report_html, embedded::report_css, embedded::report_js};
}

void TemplateContent::appendTo(std::string& page) const {
  page += text_;
  if (append_) {
    append_(page);
  }
}

std::string filledTemplate(std::string_view html, const TemplateContents& contents) {
  constexpr std::string_view opening = "[[";
  constexpr std::string_view closing = "]]";
  std::string page;
  while (true) {
    const std::size_t start = html.find(opening);
    const std::size_t end = start == std::string_view::npos ? start : html.find(closing, start);
    if (end == std::string_view::npos) {
      return page.append(html);
    }
    page += html.substr(0, start);
    const auto content = contents.find(html.substr(start + opening.size(), end - start - opening.size()));
    if (content != contents.end()) {
      content->second.appendTo(page);
    }
    html.remove_prefix(end + closing.size());
  }
}

std::string contentPolicy(std::string_view style, std::string_view script) {
  return "default-src 'none'; script-src " + sourceOf(script) + "; style-src " + sourceOf(style) +
         "; base-uri 'none'; form-action 'none'";
}

std::string completePage(PageKind kind, TemplateContents contents) {
  const PageParts parts = partsOf(kind);
  contents["policy"] = contentPolicy(parts.style, parts.script);
  contents["style"] = parts.style;
  contents["script"] = parts.script;
  return filledTemplate(parts.html, contents);
}

}  // namespace kiv::report
