#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/console/console_system.h"
#include "platform/console/page_corrections.h"
#include "repair/fix_plan.h"

namespace kiv {

/// The tables of corrections that a command line names, as they were typed.
struct TableOptions {
  std::vector<std::string> files;  ///< "-" is standard input
  std::string only;                ///< the least confidence of a row: "sure" or "likely"; "" for all rows
};

/// The corrections that a command line asks for.
struct IdRequests {
  std::vector<repair::IdRequest> requests;
  std::vector<repair::IdMapping> mappings;
  std::vector<CorrectionTable> tables;
  std::size_t undecided = 0;        ///< rows of tables without a new id
  std::size_t leftOut = 0;          ///< rows of less confidence than was asked for
  std::vector<std::string> errors;  ///< a line each, with file and line number where there is one
};

/// Reads the tables. Pages are named as nameOfPage does.
IdRequests readTables(ConsoleSystem& system, const TableOptions& options);

/// The path of a table on the disk; "" for standard input.
std::string pathOfTable(NativeSystem& system, const std::string& file);

/// Whether a file that is named with its folder is none of the pages. Without one, its name alone counts.
bool isElsewhere(ConsoleSystem& system, const std::string& file);

/// How requests name the page of a file: without folder, in capitals.
std::string nameOfPage(NativeSystem& system, const std::string& file);

}  // namespace kiv
