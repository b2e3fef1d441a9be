#include "tests/drawing/xml.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <utility>

#include <expat.h>
#include <gtest/gtest.h>

namespace kiv::test {
namespace {

struct Reading {
  std::vector<XmlElement> elements;
  std::vector<std::size_t> open;
};

void begin(void* data, const XML_Char* name, const XML_Char** attributes) {
  Reading& reading = *static_cast<Reading*>(data);
  XmlElement element{name, {}, ""};
  for (; *attributes != nullptr; attributes += 2) {
    element.attributes[attributes[0]] = attributes[1];
  }
  reading.open.push_back(reading.elements.size());
  reading.elements.push_back(std::move(element));
}

void end(void* data, const XML_Char* /*name*/) {
  static_cast<Reading*>(data)->open.pop_back();
}

void characters(void* data, const XML_Char* text, int length) {
  Reading& reading = *static_cast<Reading*>(data);
  if (!reading.open.empty()) {
    reading.elements[reading.open.back()].text.append(text, static_cast<std::size_t>(length));
  }
}

}  // namespace

std::string XmlElement::operator[](const std::string& attribute) const {
  const auto found = attributes.find(attribute);
  return found == attributes.end() ? "" : found->second;
}

double XmlElement::number(const std::string& attribute) const {
  return std::strtod((*this)[attribute].c_str(), nullptr);
}

std::vector<XmlElement> elementsOf(std::string_view xml) {
  Reading reading;
  const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate("UTF-8"), XML_ParserFree);
  XML_SetUserData(parser.get(), &reading);
  XML_SetElementHandler(parser.get(), begin, end);
  XML_SetCharacterDataHandler(parser.get(), characters);
  const auto status = XML_Parse(parser.get(), xml.data(), static_cast<int>(xml.size()), XML_TRUE);
  EXPECT_EQ(status, XML_STATUS_OK) << XML_ErrorString(XML_GetErrorCode(parser.get())) << " in line "
                                   << XML_GetCurrentLineNumber(parser.get());
  return reading.elements;
}

std::vector<XmlElement> withClass(const std::vector<XmlElement>& elements, const std::string& className) {
  std::vector<XmlElement> found;
  std::copy_if(elements.begin(), elements.end(), std::back_inserter(found),
               [&](const XmlElement& element) { return element["class"] == className; });
  return found;
}

std::vector<XmlElement> withTag(const std::vector<XmlElement>& elements, const std::string& name) {
  std::vector<XmlElement> found;
  std::copy_if(elements.begin(), elements.end(), std::back_inserter(found),
               [&](const XmlElement& element) { return element.name == name; });
  return found;
}

void expectBounded(const std::vector<XmlElement>& elements, double limit) {
  for (const XmlElement& element : elements) {
    for (const char* name : {"x", "y", "x1", "x2", "y1", "y2", "width", "height"}) {
      EXPECT_LE(std::abs(element.number(name)), limit) << element.name << " " << name << " " << element[name];
    }
  }
}

}  // namespace kiv::test
