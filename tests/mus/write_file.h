#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "mus/reader.h"
#include "mus/writer.h"
#include "pagetext/page_text.h"
#include "tests/support/pages.h"

namespace kiv::test {

inline const std::string brokenPage = "Structural error in MUS file. Try to recover with KivValid/KivRecover.";

/// A table, and the page file P.MUS that it is written as.
class WriteFile : public testing::Test {
 protected:
  void load(std::string_view pageText) { table_ = tableOf(host_, pageText); }

  void add(const Item& item) { table_.store_item(item); }
  void add(std::initializer_list<float> parameters, const std::string& text = "") { add(itemOf(parameters, text)); }
  /// One text item of staff 1 at 0 and nothing else.
  void loadText(float type, const std::string& text) {
    table_.clear();
    add({type, 1}, text);
  }

  /// Writes the table as P.MUS. Returns the exit code of a program that ended over it.
  std::optional<int> write() {
    return endOf(host_, [&] { writeFile(host_, "C:\\P.MUS", table_, buffer_); });
  }
  std::string file() const { return host_.file("C:\\P.MUS"); }
  /// The file written, without header and trailer.
  std::string items() const { return file().substr(2, file().size() - 26); }

  /// What is written is the page of the text, byte for byte.
  void expectWritten(std::string_view pageText) {
    ASSERT_EQ(write(), std::nullopt);
    EXPECT_EQ(dumpPage(file()), dumpPage(page(pageText)));
    EXPECT_TRUE(file() == page(pageText));
    EXPECT_EQ(host_.messages, std::vector<Message>{});
  }

  /// The file written, loaded again.
  std::string readBack() {
    ItemTable table;
    EXPECT_EQ(endOf(host_, [&] { readFile(host_, "C:\\P.MUS", table); }), std::nullopt);
    return asText(table);
  }
  void expectBrokenPage() {
    ItemTable table;
    EXPECT_EQ(endOf(host_, [&] { readFile(host_, "C:\\P.MUS", table); }), 1);
    EXPECT_EQ(host_.messages, std::vector<Message>{critical(brokenPage)});
  }

  FakeHost host_;
  ItemTable table_;
  std::string buffer_;
};

}  // namespace kiv::test
