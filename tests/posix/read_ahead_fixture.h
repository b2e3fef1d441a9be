#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/console/console_system.h"
#include "platform/console/read_ahead.h"
#include "platform/file_buffer.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {

/// Files that hold their own names, some of them often.
class ReadAheadTest : public testing::Test {
 protected:
  static constexpr std::size_t limit = 1000;

  std::string content(int number) const {
    return std::string(static_cast<std::size_t>(number % 90) * 10, 'x') + name(number);
  }
  static std::string name(int number) { return "P" + std::to_string(number) + ".MUS"; }
  std::string path(int number) const { return disk.path(name(number)).string(); }
  std::vector<std::string_view> files(int count) {
    std::vector<std::string_view> paths;
    for (int number = 1; number <= count; ++number) {
      disk.addFile(name(number), content(number));
      paths.push_back(texts.emplace_back(path(number)));
    }
    return paths;
  }

  TemporaryFolder disk;
  FileBuffer buffer;
  std::deque<std::string> texts;  // of the paths
};

/// A run with bound pages, whose names have been checked.
class PagesAhead : public ReadAheadTest {
 protected:
  void start(int count) {
    files(count);
    std::vector<FoundFile> pages;
    for (int number = 1; number <= count; ++number) {
      pages.push_back({disk.core(name(number)), path(number)});
      names.push_back(system.upperCase(pages.back().name));
    }
    system.bindPages(pages);
    for (const std::string& name : names) {
      EXPECT_TRUE(system.openInput(name));
    }
  }
  bool isReadAhead(std::size_t index) {
    std::string bytes;
    const auto file = system.openInput(names[index]);
    return file && file->exchangeContent(bytes).has_value();
  }

  ConsoleSystem system;
  std::vector<std::string> names;
};

}  // namespace kiv::test
