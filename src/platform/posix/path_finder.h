#pragma once

#include <ctime>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <sys/types.h>

namespace kiv {

/// Finds files by the core's names, where the disk writes names with slashes and distinguishes case.
///
/// A name like \A\B stands for /A/B: each component is looked up as it is written first, and then regardless of
/// case; a folder in which the rest of the name is not found gives way to the next one.
class PathFinder {
 public:
  /// The file that a name stands for; where there is none, the path under which it would be created. "" for what cannot
  /// be a name.
  std::string resolve(const std::string& name);
  /// The path that most names stand for: their file in the first folder that their folder's name leads to. Nullopt when
  /// there is no such folder.
  std::optional<std::string> likelyPath(const std::string& name);

  /// From now on, a folder that is there as it is written is the one that is meant: a file that it lacks is not
  /// searched for in folders whose names differ in case.
  void useExactFolders() { usesExactFolders_ = true; }

  /// Adds a file that this run created to what is known of its folder, so that a run which writes many files into one
  /// folder does not list it for each of them.
  void addToListing(const std::string& path);
  /// Whether what is known of a folder is what it holds.
  bool isCurrent(const std::string& folder);
  /// As long as one lives, what is known of a folder is taken for what it holds, if it was that at first: what changes
  /// there is what this run puts there. It must not outlive the finder.
  class HeldFolder {
   public:
    HeldFolder(PathFinder& finder, std::string folder);
    HeldFolder(const HeldFolder&) = delete;
    HeldFolder& operator=(const HeldFolder&) = delete;
    ~HeldFolder();

   private:
    PathFinder& finder_;
    std::string folder_;
  };
  /// Forgets everything; relative names are about to mean other files.
  void clear();

 private:
  /// What a folder holds, by upper-case name, and the time of its last change when it was listed.
  struct Listing {
    std::timespec changed{};
    bool settled = false;  // a later change has another time
    bool held = false;     // later changes are those of this run
    std::multimap<std::string, std::string> names;
  };
  /// A folder by its identity, and how much of a name was still to be found there.
  using Attempt = std::tuple<dev_t, ino_t, std::size_t>;
  /// Nullopt for a folder that is not there. Only a search that has failed somewhere needs to ask.
  static std::optional<Attempt> attemptIn(const std::string& folder, std::string_view rest);

  /// The existing file or folder that the rest of a path leads to from a folder; nullopt when there is none.
  std::optional<std::string> find(const std::string& folder, std::string_view rest);
  std::optional<std::string> find(const std::string& folder, std::string_view rest, std::set<Attempt>& failed);
  /// The same for a folder within the search. None is searched twice for the same rest, so links that lead back cost
  /// nothing.
  std::optional<std::string> findOnce(const std::string& folder, std::string_view rest, std::set<Attempt>& failed);
  /// The first folder that a folder's name leads to. The names of a group share few folders, each many components deep,
  /// so it is searched for once in a run.
  std::optional<std::string> firstFolder(const std::string& folder);
  /// The names in a folder that are the component but for their case, in order.
  std::vector<std::string> candidates(const std::string& folder, const std::string& component);
  const Listing& listing(const std::string& folder);

  std::map<std::string, Listing> listings_;
  std::map<std::string, std::string> folders_;  // what firstFolder found
  bool usesExactFolders_ = false;
};

/// Calls visit with the name of every entry of a folder, in the system's order. False when it cannot be listed. Throws
/// std::bad_alloc when there is no memory for that.
bool forEachEntry(const std::string& folder, const std::function<void(const char* name)>& visit);

}  // namespace kiv
