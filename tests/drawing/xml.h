#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// An element of a drawing, without its position in the tree.
struct XmlElement {
  std::string name;
  std::map<std::string, std::string> attributes;
  std::string text;  ///< directly within it

  /// The attribute; "" when it is not there.
  std::string operator[](const std::string& attribute) const;
  double number(const std::string& attribute) const;
};

/// The elements in document order. A text that a conforming parser rejects fails the test.
std::vector<XmlElement> elementsOf(std::string_view xml);

/// Those with a class, or with the tag when the class is "".
std::vector<XmlElement> withClass(const std::vector<XmlElement>& elements, const std::string& className);
std::vector<XmlElement> withTag(const std::vector<XmlElement>& elements, const std::string& name);

/// Fails the test when a coordinate or size is beyond the limit.
void expectBounded(const std::vector<XmlElement>& elements, double limit);

}  // namespace kiv::test
