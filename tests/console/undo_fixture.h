#pragma once

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/console/convert_fixture.h"

namespace kiv::test {

/// Bytes, time of the last change and mode of a file; of a folder or a link what it is.
using Snapshot = std::map<std::string, std::string>;

class Undo : public ConsoleConvert {
 protected:
  void SetUp() override {
    addTwo();
    fs::create_directory(place.path() / "out");
  }
  /// A file of the user's that a run will replace, as no run would write it.
  void addOld(const std::string& file, const std::string& content = "old") const {
    place.write(file, content);
    const fs::path path = place.path() / file;
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    fs::last_write_time(path, fs::last_write_time(path) - std::chrono::hours(1000) - std::chrono::nanoseconds(12345));
  }
  Snapshot snapshot() const {
    Snapshot all;
    for (const auto& entry : fs::recursive_directory_iterator(place.path())) {
      const std::string name = fs::relative(entry.path(), place.path()).string();
      struct stat status {};
      EXPECT_EQ(::lstat(entry.path().c_str(), &status), 0);
      const bool isFile = entry.is_regular_file() && !entry.is_symlink();
      all[name] =
          std::to_string(status.st_mode) + (isFile ? " " + std::to_string(status.st_mtim.tv_sec) + "." +
                                                         std::to_string(status.st_mtim.tv_nsec) + " " + place.read(name)
                                                   : "");
    }
    return all;
  }
  Ended convert(const Names& more = {}) const {
    Names arguments = {"convert", "x1.mus", "x2.mus", "--result", "out/WORK0001.MUS"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return place.kivsys(arguments);
  }
  void expectUndone(const Snapshot& before, const std::string& folder = ".") const {
    const Ended ended = place.kivsys({"undo", folder});
    EXPECT_EQ(ended.status, 0) << ended.error;
    EXPECT_EQ(snapshot(), before);
  }
  void expectNothingToUndo(const std::string& folder = ".") const {
    const Ended ended = place.kivsys({"undo", folder});
    EXPECT_EQ(ended.status, 2);
    const std::string start = "kivsys: no run in the folder " + folder + " can be undone: ";
    EXPECT_TRUE(ended.error.starts_with(start)) << ended.error;
    EXPECT_EQ(std::count(ended.error.begin(), ended.error.end(), '\n'), 1) << ended.error;
  }
  /// Leaves the first lines of the only journal, and a part of the next one.
  void cutJournal(int lines, const std::string& rest) const {
    const fs::path folder = place.stateFolder() / "kivsys/undo";
    for (const std::string& file : filesIn(folder)) {
      if (!file.starts_with("run-")) {
        continue;
      }
      std::ifstream in(folder / file);
      std::string head;
      std::string line;
      for (int i = 0; i < lines && std::getline(in, line); ++i) {
        head += line + "\n";
      }
      in.close();
      std::ofstream(folder / file, std::ios::trunc) << head << rest;
    }
  }
  bool hasKept(const std::string& folder) const { return fs::exists(place.path() / folder / ".kivsys"); }
  std::string path(const std::string& file) const { return (place.path() / file).string(); }
};

}  // namespace kiv::test
