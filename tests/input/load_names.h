#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "input/names_table.h"
#include "tests/input/names_host.h"

namespace kiv::test {

using Texts = std::vector<std::string>;

inline const Texts refusal = {"open", "message", "close", "view", "delete"};

inline Message noPrefix(const std::string& record) {
  return information("Invalid record format in Names file.\r\nName must have a path prefix:\r\n" + record +
                     "\r\nNames file will be deleted after view.");
}
inline Message notTerminated(const std::string& line) {
  return information("Filename [" + line + "] in Names file not terminated by ' 1'. Hit enter to continue.");
}
inline Message otherPrefix() {
  return information(
      "Names in Names file do not all have the same path prefix.\r\nThis is a requirement for KivSystem.\r\n"
      "Names file will be deleted after view.");
}
inline Message missing(const std::string& name) {
  return information("Name in Names file [" + name +
                     "] refers to non-existing or unaccessable file\r\nNames file will be deleted after view.");
}
inline Message missingOnDiskette(const std::string& name) {
  return information("Name in names file [" + name +
                     "] refers to non-existing or unaccessable file\r\n"
                     "Define a new names file by music file selection.");
}

/// A disk with the pages C:\S\A001.MUS and C:\S\A002.MUS and a names file that each test writes.
class LoadNames : public testing::Test {
 protected:
  LoadNames() {
    host.addFile("C:\\S\\A001.MUS", "");
    host.addFile("C:\\S\\A002.MUS", "");
  }

  void load(const std::string& namesFileText) {
    host.addFile(NamesHost::namesFile, namesFileText);
    host.events.clear();
    host.messages.clear();
    host.calls.clear();
    LoadNamesTable(host, NamesHost::namesFile, names);
  }

  Texts loaded() const {
    Texts texts;
    for (int i = 1; i <= names.nameCount; ++i) {
      texts.push_back(names.name(i));
    }
    return texts;
  }

  bool namesFileIsThere() const { return host.hasFile(NamesHost::namesFile); }

  NamesHost host;
  NamesTable names;
};

}  // namespace kiv::test
