#include "platform/separators.h"

namespace kiv {
namespace {

/// Calls visit(index) for each backslash from the left until it returns false.
template <typename Visit>
void forEachBackslash(Machine& machine, std::string_view text, Visit visit) {
  constexpr unsigned char lastAscii = 0x7F;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\') {
      if (!visit(i)) {
        return;
      }
    } else if (static_cast<unsigned char>(text[i]) > lastAscii && machine.isLeadByte(text[i])) {
      ++i;
    }
  }
}

}  // namespace

std::size_t lastBackslash(Machine& machine, std::string_view text) {
  std::size_t last = std::string_view::npos;
  forEachBackslash(machine, text, [&](std::size_t i) {
    last = i;
    return true;
  });
  return last;
}

bool endsWithBackslash(Machine& machine, std::string_view text) {
  return text.ends_with('\\') && lastBackslash(machine, text) == text.size() - 1;
}

bool hasTwoBackslashes(Machine& machine, std::string_view text) {
  bool found = false;
  forEachBackslash(machine, text, [&](std::size_t i) {
    found = i + 1 < text.size() && text[i + 1] == '\\';
    return !found;
  });
  return found;
}

bool endsWithSeparator(Machine& machine, std::string_view path) {
  return path.ends_with('/') || endsWithBackslash(machine, path);
}

std::string withoutEndSeparators(Machine& machine, std::string path) {
  while (path.size() > 1 && endsWithSeparator(machine, path) && !path.ends_with(":\\")) {
    path.pop_back();
  }
  return path;
}

}  // namespace kiv
