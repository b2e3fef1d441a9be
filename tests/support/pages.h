#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "mus/item_table.h"
#include "tests/support/fake_host.h"

namespace kiv::test {

/// The bytes of the page that the text describes, as `kivsys build` makes them. A text that describes none fails the
/// test.
std::string page(std::string_view text);

/// An item with the parameters P1, P2 ... and a text.
Item itemOf(std::initializer_list<float> parameters, std::string text = "");

/// An item table that holds the items of the page text. Errors name them as those of "C:\TABLE.MUS".
ItemTable tableOf(FakeHost& host, std::string_view text);

/// The page file that the table is written as. Like writing it, this sets the lengths in counted texts and P4 of the
/// staves.
std::string bytesOf(ItemTable& table);

/// The table as page text, one item a line, without numbers and offsets; P18 to P20 are shown where they are not 0.
std::string asText(const ItemTable& table);

}  // namespace kiv::test
