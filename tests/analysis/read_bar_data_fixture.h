#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "analysis/read_bar_data.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {

/// Pages that are read as C:\M\A1.MUS.
class ReadBarData : public ::testing::Test {
 protected:
  /// Reads a page of this text as C:\M\A1.MUS.
  void read(std::string_view text, std::int16_t offset = 0) { readBytes(page(text), offset); }
  void readBytes(std::string bytes, std::int16_t offset = 0) {
    host.addFile(name, std::move(bytes));
    end = endOf(host, [&] { reader.readBarData(name, offset, table, firstClefs); });
  }
  std::string items() const { return asText(table); }

  const std::string name = "C:\\M\\A1.MUS";
  FakeHost host;
  ItemTable table;
  FirstClefTable firstClefs;
  BarDataReader reader{host, host, host};
  std::optional<int> end;
};

}  // namespace kiv::test
