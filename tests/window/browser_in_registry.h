#pragma once

#include <string>

#include "platform/win32/windows_api.h"

namespace kiv::test {

/// Makes a program the user's browser for as long as this lives, and gives the user another folder for temporary files:
/// the new folder TEMPORARY in the current one. Programs that are started meanwhile know both.
class BrowserInRegistry {
 public:
  /// The program leaves its command line in said.txt.
  BrowserInRegistry();
  BrowserInRegistry(const BrowserInRegistry&) = delete;
  BrowserInRegistry& operator=(const BrowserInRegistry&) = delete;
  ~BrowserInRegistry();

  /// From now on the browser is a program that is not there.
  void lose() const;
  /// What the browser has been called with; waits for that.
  std::string calledWith() const;

 private:
  std::wstring temporary_;
  std::string typeBefore_;
};

}  // namespace kiv::test
