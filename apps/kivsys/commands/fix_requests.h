#pragma once

#include <string>
#include <vector>

#include "platform/console/console_system.h"
#include "repair/fix_plan.h"

namespace kiv {

struct FixOptions;

/// The corrections that a command line asks for.
struct FixRequests {
  std::vector<repair::IdRequest> requests;
  std::vector<repair::IdMapping> mappings;
  std::size_t undecided = 0;        ///< rows of tables without a new id
  std::size_t leftOut = 0;          ///< rows of less confidence than was asked for
  std::vector<std::string> errors;  ///< a line each, with file and line number where there is one
};

/// Reads the tables and options. Pages are named as nameOfPage does.
FixRequests readRequests(ConsoleSystem& system, const FixOptions& options);

/// How requests name the page of a file: without folder, in capitals.
std::string nameOfPage(NativeSystem& system, const std::string& file);

}  // namespace kiv
