#include "repair/listed_look.h"

#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "base/number.h"

namespace kiv {
namespace {

/// The first of the values in a cell.
std::string_view firstIn(std::string_view cell) {
  return cell.substr(0, cell.find(", "));
}

/// A number that single precision holds.
std::optional<float> numberIn(std::string_view text) {
  const auto number = strictNumber(text);
  const auto single = number ? std::optional(static_cast<float>(*number)) : std::nullopt;
  return single && std::isfinite(*single) ? single : std::nullopt;
}

std::optional<float> positiveIn(std::string_view text) {
  const auto number = numberIn(text);
  return number && *number >= 0 ? number : std::nullopt;
}

/// The height at the end of the word for a clef: "+2", "-4", or nothing.
std::optional<float> heightIn(std::string_view text) {
  return text.empty() ? std::optional(0.0F) : numberIn(text.starts_with('+') ? text.substr(1) : text);
}

std::optional<ClefForm> clefIn(std::string_view text) {
  constexpr std::array<std::pair<std::string_view, ClefForm>, 4> words = {
      {{"treble", {0, 0}}, {"bass", {1, 0}}, {"alto", {2, 0}}, {"tenor", {2, 2}}}};
  for (const auto& [word, clef] : words) {
    const auto moved = text.starts_with(word) ? heightIn(text.substr(word.size())) : std::nullopt;
    if (moved) {
      return ClefForm{clef.kind, clef.height + *moved};
    }
  }
  constexpr std::string_view kind = "kind ";
  if (!text.starts_with(kind)) {
    return std::nullopt;
  }
  text.remove_prefix(kind.size());
  const std::size_t blank = std::min(text.find(' '), text.size());
  const auto number = numberIn(text.substr(0, blank));
  const auto height = heightIn(text.substr(std::min(blank + 1, text.size())));
  return number && height ? std::optional(ClefForm{*number, *height}) : std::nullopt;
}

/// "2#", "3b", or a number.
std::optional<float> keyIn(std::string_view text) {
  const bool isFlat = text.ends_with('b');
  if (!isFlat && !text.ends_with('#')) {
    return numberIn(text);
  }
  const auto count = positiveIn(text.substr(0, text.size() - 1));
  return count ? std::optional(isFlat ? -*count : *count) : std::nullopt;
}

/// Reads the cells of one instrument.
class LookReader {
 public:
  explicit LookReader(const ListedInstrument& instrument) : instrument_(instrument) {}

  ListedLook read() {
    ListedLook look;
    look.id = instrument_.id;
    look.clef = value(instrument_.clefs, clefIn, "clef");
    look.lines = value(instrument_.lines, positiveIn, "number of staff lines");
    look.size = value(instrument_.sizes, positiveIn, "staff size");
    look.key = value(instrument_.keys, keyIn, "key");
    return look;
  }
  const std::optional<LayoutFileError>& error() const { return error_; }

 private:
  template <typename Value>
  std::optional<Value> value(std::string_view cell, std::optional<Value> (*valueIn)(std::string_view),
                             const std::string& what) {
    if (cell.empty()) {
      return std::nullopt;
    }
    const auto found = valueIn(firstIn(cell));
    if (!found && !error_) {
      error_ = {instrument_.line, "\"" + shownCell(cell) + "\" is no " + what};
    }
    return found;
  }

  const ListedInstrument& instrument_;
  std::optional<LayoutFileError> error_;
};

}  // namespace

std::variant<std::vector<ListedLook>, LayoutFileError> looksOf(const std::vector<ListedInstrument>& instruments) {
  std::vector<ListedLook> looks;
  for (const ListedInstrument& instrument : instruments) {
    LookReader reader(instrument);
    looks.push_back(reader.read());
    if (reader.error()) {
      return *reader.error();
    }
  }
  return looks;
}

}  // namespace kiv
