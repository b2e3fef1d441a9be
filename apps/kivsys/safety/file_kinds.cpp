#include "apps/kivsys/safety/file_kinds.h"

#include <algorithm>
#include <cstddef>

#include "mus/page_walker.h"
#include "report_page/report_page.h"

namespace kiv {
namespace {

/// An SVG element, after an XML declaration, comments and blanks.
bool isDrawing(std::string_view content) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  content.remove_prefix(content.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
  while (true) {
    content.remove_prefix(std::min(content.find_first_not_of(" \t\r\n"), content.size()));
    const bool isHead =
        content.starts_with("<?") || content.starts_with("<!--") || content.starts_with("<!DOCTYPE svg");
    if (!isHead) {
      return content.starts_with("<svg") && content.find_first_of(" \t\r\n>/") == std::string_view("<svg").size();
    }
    const std::string_view end = content.starts_with("<!--") ? "-->" : ">";
    const std::size_t at = content.find(end);
    content.remove_prefix(at == std::string_view::npos ? content.size() : at + end.size());
  }
}

bool isHexadecimal(std::string_view text) {
  return text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool isManifestLine(std::string_view line) {
  constexpr std::size_t digits = 64;
  line.remove_prefix(line.starts_with('\\') ? 1 : 0);
  return line.size() > digits + 2 && isHexadecimal(line.substr(0, digits)) && line.substr(digits, 2) == "  ";
}

/// All lines of the content, of which there is one at least, are those of a manifest, after comments on tables.
bool isManifest(std::string_view content) {
  while ((content.starts_with("# corrections: ") || content.starts_with("# layout: ")) &&
         content.find('\n') != std::string_view::npos) {
    content.remove_prefix(content.find('\n') + 1);
  }
  bool isAny = false;
  for (std::size_t end = content.find('\n'); end != std::string_view::npos; end = content.find('\n')) {
    if (!isManifestLine(content.substr(0, end))) {
      return false;
    }
    isAny = true;
    content.remove_prefix(end + 1);
  }
  return isAny && content.empty();
}

/// The heads of the columns come first, as `kivsys suggest` writes them or a spreadsheet does.
bool isCorrections(std::string_view content) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  content.remove_prefix(content.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
  return content.starts_with("file,system,staff,item,what,") || content.starts_with("file;system;staff;item;what;");
}

}  // namespace

bool isOfKind(std::string_view content, OutputKind kind) {
  switch (kind) {
    case OutputKind::drawing:
      return isDrawing(content);
    case OutputKind::manifest:
      return isManifest(content);
    case OutputKind::page:
      return isPage(content);
    case OutputKind::corrections:
      return isCorrections(content);
    case OutputKind::htmlReport:
      return content.starts_with(report::pageStart);
  }
  return false;
}

bool isPage(std::string_view content) {
  PageWalker walker(content);
  ReadStatus status = walker.findItem();
  while (status == ReadStatus::itemRead) {
    status = walker.findItem();
  }
  return status == ReadStatus::endOfItems;
}

}  // namespace kiv
