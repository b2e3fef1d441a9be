#include "tests/faults/disk_checks.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

bool isPageResult(const std::string& name) {
  return name.find("\\WORK0") != std::string::npos || name.ends_with(".PAG");
}

bool isTextResult(const std::string& name) {
  return name.starts_with("C:\\KIV\\KIVSYSTEM") && name.ends_with(".TXT");
}

}  // namespace

void expectWhole(const Disk& before, const Disk& disk, const Disk& whole) {
  for (const auto& [name, content] : disk) {
    const auto old = before.find(name);
    const bool isOld = old != before.end() && old->second == content;
    const auto made = whole.find(name);
    if (made == whole.end()) {
      EXPECT_TRUE(isOld) << "a stray file: " << name;
    } else if (isTextResult(name)) {
      EXPECT_TRUE(isOld || made->second.starts_with(content)) << name << "\n" << content;
    } else if (isPageResult(name)) {
      EXPECT_TRUE(isOld || made->second == content) << name;
    }
  }
}

void expectInputs(const Disk& before, const Disk& disk, bool dropsNamesFile) {
  EXPECT_EQ(disk.contains(namesFile), !dropsNamesFile);
  for (const auto& [name, content] : before) {
    if (isTextResult(name) || (name == namesFile && dropsNamesFile)) {
      continue;
    }
    ASSERT_TRUE(disk.contains(name)) << name;
    if (!isPageResult(name)) {
      EXPECT_EQ(disk.at(name), content) << name;
    }
  }
}

}  // namespace kiv::test
