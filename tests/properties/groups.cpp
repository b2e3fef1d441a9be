#include "tests/properties/groups.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <utility>

#include "base/exact_number.h"
#include "tests/properties/piece.h"

namespace kiv::test {
namespace {

using piece::InnerItem;
using piece::Page;
using piece::Parameters;
using piece::Piece;
using piece::Staff;
using piece::System;

// --- lines ---

template <std::size_t Size>
int oneOf(const int (&values)[Size], int which) {
  return values[static_cast<std::size_t>(which) % Size];
}

std::string halves(int value) {
  return exactNumber(static_cast<float>(value) / 2);
}

std::string at(const std::string& what, int staff, const std::string& position) {
  return what + " " + std::to_string(staff) + " at " + position;
}

std::string at(const std::string& what, int staff, int position) {
  return at(what, staff, std::to_string(position));
}

std::string with(const std::string& parameter, int value) {
  return " " + parameter + " " + std::to_string(value);
}

std::string time(int which) {
  constexpr int upper[] = {4, 3, 6, 2, 99, 98, 5};
  constexpr int lower[] = {4, 4, 8, 2, 0, 0, 8};
  return with("upper", oneOf(upper, which)) + with("lower", oneOf(lower, which));
}

/// Parameters up to the last one that the item can have.
std::string with(const Parameters& parameters, int last = 20) {
  std::string line;
  for (const auto& [p, value] : parameters) {
    line += p <= last ? " p" + std::to_string(p) + " " + halves(value) : "";
  }
  return line;
}

/// An item of a type that has no word.
std::string other(int type, int staff, const std::string& position, const Parameters& parameters) {
  constexpr int first = 4;
  std::vector<int> values;
  for (const auto& [p, value] : parameters) {
    const auto place = static_cast<std::size_t>(p - first);
    values.resize(std::max(values.size(), place + 1));
    values[place] = value;
  }
  std::string line = "item " + std::to_string(type) + " " + std::to_string(staff) + " " + position;
  for (const int value : values) {
    line += " " + halves(value);
  }
  return line;
}

std::string innerItem(const InnerItem& item, int staff, const std::string& position) {
  const std::string blanks(item.parameters.size(), ' ');
  switch (item.what) {
    case 0:
      return at("note", staff, position) + with(item.parameters);
    case 1:
      return at("rest", staff, position) + with(item.parameters);
    case 2:
      return at("rest", staff, position) + " kind -2" + with("cue", 1 + item.position % 4);
    case 3:
      return at("clef", staff, position) + with(item.parameters);
    case 4:
      return at("keysignature", staff, position) + with(item.parameters);
    case 5:
      return at("timesignature", staff, position) + time(item.position) + with("p4", item.bar);
    case 6:
      return at("shorttext", staff, position) + with(item.parameters, 12) + " \"f" + blanks + "\"";
    case 7:
      return at("text", staff, position) + with(item.parameters, 13) + " \"molto" + blanks + "crescendo poco a poco\"";
    case 8:
      return at("countedtext", staff, position) + with(item.parameters, 11) + " \"dolce" + blanks + "\"";
    default: {
      constexpr int types[] = {4, 5, 6, 7, 9, 10, 12, 13};
      return other(oneOf(types, item.what), staff, position, item.parameters);
    }
  }
}

// --- staves ---

/// What the lines of a staff depend on besides the staff itself.
struct Surroundings {
  const System& system;
  int identifier = 0;    // of its instrument
  int number = 0;        // of the staff
  int together = 0;      // staves of the system in this file
  bool lowest = false;   // of them
  bool closed = false;   // must have a barline at its left
  bool hasTime = false;  // must have a time signature
};

constexpr int barWidth = 100;
constexpr int bracketIndent = 3;  // out of every staff's edge: there it would pass for the barline of a single staff

std::string staffItem(const Staff& staff, const Surroundings& in) {
  constexpr int lines[] = {5, 1, 2, 3, 4, 6, 0};
  const bool hidden = staff.hidden && !in.lowest;
  return at("staff", in.number, in.system.left + in.system.edge) + with("p4", staff.look % 2) +
         with("size", staff.look % 3) + with("p6", staff.look % 4) +
         with("lines", hidden ? -1 : oneOf(lines, staff.look)) + with("instrument", in.identifier) +
         with("p11", staff.look % 5) + "\n";
}

std::string signatures(const Staff& staff, const Surroundings& in) {
  std::string lines;
  if (staff.clef != 0) {
    lines += at("clef", in.number, in.system.left + 2) + with("height", staff.clef - 3) + with("kind", staff.clef - 1);
    lines += "\n";
  }
  if (staff.key != 0) {
    lines += at("keysignature", in.number, in.system.left + 4) + with("key", staff.key - 2) + with("type", 1) + "\n";
  }
  if (staff.time != 0 || in.hasTime) {
    lines += at("timesignature", in.number, in.system.left + 6) + time(staff.time) + "\n";
  }
  return lines;
}

std::string barlines(const Staff& staff, const Surroundings& in) {
  std::string lines;
  if (staff.brace != 0) {
    lines += at("barline", in.number, in.system.left - bracketIndent) +
             with("spans", std::min(staff.brace, in.together)) + with("kind", 7 + staff.brace) + "\n";
  }
  if (in.lowest && (in.closed || in.together > 1 || !in.system.open)) {
    lines += at("barline", in.number, in.system.left) + with("spans", in.together) + "\n";
  }
  int position = in.system.left;
  for (const int kind : in.system.barlines) {
    position += barWidth;
    if (in.lowest) {
      lines += at("barline", in.number, position) + with("spans", kind % 2) + with("kind", kind) + "\n";
    } else if (staff.barlines) {
      lines += at("barline", in.number, position - kind) + "\n";
    }
  }
  return lines;
}

std::string contents(const Staff& staff, const Surroundings& in) {
  constexpr int afterSignatures = 8;
  const int bars = static_cast<int>(in.system.barlines.size()) + 1;
  std::string lines;
  for (int bar = 0; bar < bars; ++bar) {
    lines += at((staff.beat + bar) % 3 == 0 ? "rest" : "note", in.number,
                in.system.left + bar * barWidth + afterSignatures + staff.beat) +
             with("height", bar) + "\n";
  }
  for (const InnerItem& item : staff.items) {
    const int barline = in.system.left + item.bar % bars * barWidth;
    lines += innerItem(item, in.number, halves(2 * barline + item.position)) + "\n";
  }
  return lines;
}

// --- pages ---

class GroupMaker {
 public:
  explicit GroupMaker(const Piece& piece) : piece_(piece) {
    for (const Page& page : piece.pages) {
      const std::string name = "X" + std::to_string(101 + pages_++);
      if (page.systems.size() == 1 && page.files > 1 && page.systems.front().staves.size() > 1) {
        addMultifilePage(page, name);
      } else {
        addPage(page, name + ".MUS");
      }
    }
  }

  const Group& group() const { return group_; }

 private:
  using Staves = std::vector<Staff>;

  void addPage(const Page& page, const std::string& file) {
    int top = 0;
    for (const System& system : page.systems) {
      top += static_cast<int>(system.staves.size()) + system.gap;
    }
    for (const System& system : page.systems) {
      group_.systems.emplace_back();
      addStaves(system, system.staves.begin(), system.staves.end(), file, top);
      top -= static_cast<int>(system.staves.size()) + system.gap;
    }
    addLoose(page, file);
  }

  void addMultifilePage(const Page& page, const std::string& name) {
    const System& system = page.systems.front();
    const int all = static_cast<int>(system.staves.size());
    const int files = std::min(page.files, all);
    group_.systems.emplace_back();
    for (int i = 0; i < files; ++i) {
      const auto from = system.staves.begin() + all * i / files;
      const auto to = system.staves.begin() + all * (i + 1) / files;
      const std::string file = name + static_cast<char>('A' + i) + ".MUS";
      addStaves(system, from, to, file, static_cast<int>(to - from), true);
      addLoose(page, file);
    }
  }

  /// Adds staves of a system to a file, numbered downward from the top.
  void addStaves(const System& system, Staves::const_iterator from, Staves::const_iterator to, const std::string& file,
                 int top, bool closed = false) {
    for (auto staff = from; staff != to; ++staff, --top) {
      Surroundings in{system, identifierOf(*staff), top, static_cast<int>(to - from), staff + 1 == to, closed};
      in.hasTime = in.lowest && group_.systems.size() == 1;
      group_.pages[file] +=
          staffItem(*staff, in) + signatures(*staff, in) + barlines(*staff, in) + contents(*staff, in);
      if (in.lowest || !staff->hidden) {
        group_.systems.back()[in.identifier] = {file, top};
      }
    }
  }

  void addLoose(const Page& page, const std::string& file) {
    group_.pages[file] += page.loose ? "note 200 at 9 height 1\nitem 4 0 9 1\n" : "";
  }

  int identifierOf(const Staff& staff) const {
    constexpr int spreads[] = {1, 2, 101};  // as small as staff numbers are, or far from them
    return staff.instrument * oneOf(spreads, piece_.spread);
  }

  const Piece& piece_;
  int pages_ = 0;
  Group group_;
};

}  // namespace

void showValue(const Group& group, std::ostream& out) {
  for (const auto& [name, text] : group.pages) {
    out << "\n--- " << name << "\n" << text;
  }
}

rc::Gen<Group> groups(int series) {
  const auto all = rc::gen::map(piece::pieces(), [](const Piece& piece) { return GroupMaker(piece).group(); });
  return [all, series](rc::Random random, int size) {
    for (int i = 1; i < series; ++i) {
      random = random.split();
    }
    return all(random, size);
  };
}

}  // namespace kiv::test
