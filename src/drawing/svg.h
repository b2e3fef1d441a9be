#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A number with at most two decimals and no trailing zeros; -0 is "0", a NaN too.
std::string svgNumber(double number);

/// The text as a drawing may hold it: valid UTF-8 with its markup characters escaped. Bytes that are no UTF-8, and
/// characters that XML has no place for, become U+FFFD.
std::string svgText(std::string_view text);

/// The bytes of the character that a text in UTF-8 begins with; 1 for a byte that begins none. The text is not empty.
std::size_t characterBytes(std::string_view text);

/// An attribute of an element.
struct SvgAttribute {
  SvgAttribute(std::string_view theName, double number) : name(theName), value(svgNumber(number)) {}
  /// The text is escaped.
  SvgAttribute(std::string_view theName, std::string_view text) : name(theName), value(svgText(text)) {}
  SvgAttribute(std::string_view theName, const char* text) : SvgAttribute(theName, std::string_view(text)) {}

  std::string_view name;
  std::string value;
};

using SvgAttributes = std::initializer_list<SvgAttribute>;

/// Writes elements one after the other, a line each.
class SvgWriter {
 public:
  void open(std::string_view element, SvgAttributes attributes = {});
  /// Closes the element that was opened last.
  void close();
  void leaf(std::string_view element, SvgAttributes attributes);
  /// An element with this text; the text is escaped.
  void text(std::string_view element, SvgAttributes attributes, std::string_view content);

  /// What has been written so far.
  const std::string& markup() const { return markup_; }

 private:
  void begin(std::string_view element, SvgAttributes attributes);

  std::string markup_;
  std::vector<std::string> open_;
};

}  // namespace kiv
