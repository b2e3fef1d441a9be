#pragma once

#include <map>
#include <string>
#include <vector>

#include "apps/kivsys/undo/undo_store.h"

namespace kiv {

/// The runs that could be undone before this one began. They are forgotten when this run has changed something: one
/// that fails before that must not cost the user the undo of the run before.
class PreviousRuns {
 public:
  /// The store, and the head of this run's journal, must outlive this object.
  PreviousRuns(const UndoStore& store, const Journal& head) : store_(store), head_(head) {}

  /// The run before this one in a folder; "" for none.
  void add(const std::string& run, const std::string& folder);
  /// This file, or this folder, is about to be changed, which may fail.
  void expect(const FileChange& change);
  void expectFolder(const std::string& path);
  /// This run has changed a file.
  void noteChange();
  /// Looks whether one of the expected changes was made.
  void settle();
  /// Whether this run has changed something.
  bool hasChanged() const { return hasChanged_ || isAnyMade(); }
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
  void forget(const std::string& run, const std::string& folder) const;

  const UndoStore& store_;
  const Journal& head_;
  std::map<std::string, std::string> runs_;  // each with the folder in which this run follows it
  bool hasChanged_ = false;
  std::vector<Expected> changes_;
  std::vector<std::string> folders_;
};

}  // namespace kiv
