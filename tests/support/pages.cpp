#include "tests/support/pages.h"

#include <algorithm>
#include <utility>

#include <gtest/gtest.h>

#include "base/exact_number.h"
#include "mus/reader.h"
#include "mus/writer.h"
#include "pagetext/item_words.h"
#include "pagetext/page_text.h"

namespace kiv::test {
namespace {

std::string parameterWord(const ItemWord* item, int p) {
  if (item != nullptr) {
    for (const ParameterWord& word : item->parameters) {
      if (word.parameter == p) {
        return std::string(word.word);
      }
    }
  }
  return "p" + std::to_string(p);
}

std::string itemText(const ItemTable& table, int i) {
  const ItemWord* word = itemWordOf(table.type(i));
  std::string line = word != nullptr ? std::string(word->word) : "item " + exactNumber(table.type(i).number());
  line += " " + exactNumber(table.itemPar(i, par::staff)) + " at " + exactNumber(table.itemPar(i, par::position));
  for (int p = par::position + 1; p <= parameterCount; ++p) {
    if (table.itemPar(i, p) != 0) {
      line += " " + parameterWord(word, p) + " " + exactNumber(table.itemPar(i, p));
    }
  }
  return table.itemText(i).empty() ? line : line + " \"" + table.itemText(i) + "\"";
}

}  // namespace

std::string page(std::string_view text) {
  const auto built = buildPage(text);
  if (const auto* error = std::get_if<PageTextError>(&built)) {
    ADD_FAILURE() << "page text, line " << error->line << ": " << error->reason << "\n" << text;
    return "";
  }
  return std::get<std::string>(built);
}

Item itemOf(std::initializer_list<float> parameters, std::string text) {
  Item item;
  std::ranges::copy(parameters, item.parameters().begin());
  item.text = std::move(text);
  return item;
}

ItemTable tableOf(FakeHost& host, std::string_view text) {
  host.addFile("C:\\TABLE.MUS", page(text));
  ItemTable table;
  readFile(host, "C:\\TABLE.MUS", table);
  return table;
}

std::string bytesOf(ItemTable& table) {
  std::string bytes;
  encodePage("C:\\TABLE.MUS", table, bytes);
  return bytes;
}

std::string asText(const ItemTable& table) {
  std::string text;
  for (int i = 1; i <= table.itemCount(); ++i) {
    text += itemText(table, i) + "\n";
  }
  return text;
}

}  // namespace kiv::test
