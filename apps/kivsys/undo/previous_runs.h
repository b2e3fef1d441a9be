#pragma once

#include <set>
#include <string>
#include <vector>

#include "apps/kivsys/undo/undo_store.h"

namespace kiv {

/// The runs that could be undone before this one began. They are forgotten when this run has changed something: one
/// that fails before that must not cost the user the undo of the run before.
class PreviousRuns {
 public:
  /// The store must outlive this object.
  explicit PreviousRuns(const UndoStore& store) : store_(store) {}

  /// The run before this one in a folder; "" for none.
  void add(const std::string& run);
  /// This file, or this folder, is about to be changed, which may fail.
  void expect(const FileChange& change);
  void expectFolder(const std::string& path);
  /// This run has changed a file.
  void noteChange();
  /// Looks whether one of the expected changes was made.
  void settle();
  /// Whether there are some that can still be undone.
  bool areLeft() const { return !runs_.empty(); }
  /// From now on they are nothing to this run.
  void release() { runs_.clear(); }

 private:
  struct Expected {
    FileChange change;
    bool isLinked = false;  // the kept file is the very file
  };
  static bool isMade(const Expected& expected);
  bool isAnyMade() const;

  const UndoStore& store_;
  std::set<std::string> runs_;
  bool hasChanged_ = false;
  std::vector<Expected> changes_;
  std::vector<std::string> folders_;
};

}  // namespace kiv
