#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kiv {

/// An instrument that a table of instruments lists.
struct ListedInstrument {
  std::int16_t id = 0;       ///< above 0
  std::string name;          ///< as the table has it, without blanks at its ends; "" when there is none
  std::string abbreviation;  ///< the same
  std::size_t line = 0;      ///< in the table, from 1

  // The cells of the columns with these names; "" when there are none. looksOf reads them.
  std::string clefs = {};
  std::string lines = {};
  std::string sizes = {};  ///< of the column `size`
  std::string keys = {};

  bool operator==(const ListedInstrument&) const = default;
};

/// Why a table cannot be read.
struct LayoutFileError {
  std::size_t line = 0;  ///< counted from 1
  std::string reason;

  bool operator==(const LayoutFileError&) const = default;
};

/// The beginning of a cell, for a reason.
inline std::string shownCell(std::string_view cell) {
  return std::string(cell.substr(0, 40));
}

/// The longest table that is read, in bytes.
inline constexpr std::size_t longestLayoutFile = std::size_t{1} << 20U;
/// The most instruments that a table may list.
inline constexpr std::size_t mostListed = 1000;

/// Reads a table of instruments, from the top of a result to its bottom, as `kivsys instruments --csv` prints it and
/// spreadsheets store it: comma-separated values in UTF-8 or any other superset of ASCII, with or without a byte order
/// mark, lines ended by LF, CR LF or CR, cells in double quotes where they need it. If the first line has semicolons
/// and no comma outside of quotes, the cells are separated by semicolons. The first line names the columns in any
/// order; `id` must be among them, `name`, `abbreviation`,
/// `clefs`, `lines`, `size` and `keys` may be, and others are ignored. An apostrophe that keeps a
/// cell from being a formula is dropped. Empty lines are skipped.
///
/// An instrument with the id 0, which stands for all staves without one, is left out. An id that is no whole number
/// from 0 to 32767, or that is listed twice, is an error, and so is a table without instruments.
std::variant<std::vector<ListedInstrument>, LayoutFileError> readLayoutFile(std::string_view text);

}  // namespace kiv
