#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "drawing/glyphs.h"
#include "drawing/page_layout.h"
#include "drawing/svg.h"

namespace kiv {

/// A page picture during drawing.
struct PageDrawing {
  SvgWriter svg;
  std::set<Glyph> usedGlyphs;
  std::map<std::string, std::size_t> unknown;  ///< what could not be drawn, and how often

  void glyph(Glyph glyph, std::string_view className, double x, double y);
  void line(std::string_view className, double x1, double y1, double x2, double y2);
  /// A small neutral symbol above the staff, for an item of which only the position can be shown.
  void unknownSymbol(const PlacedStaff& staff, double x, const std::string& what);
};

// Each draws one kind of item of the staff.

void drawStaffLines(PageDrawing& drawing, const PlacedStaff& staff);
void drawBarlines(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff);
void drawSignatures(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff);
/// Draws heads with their dots and ledger lines.
void drawNotes(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff);
/// Draws stems with flags or beams.
void drawStems(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff);
void drawRests(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff);
void drawTexts(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff);

/// What the name of a page needs from margin to margin.
double titleWidth(std::string_view title);
/// Draws the name of the page above it and, at the left of each system, its number and the numbers of its bars, both
/// counted on the page.
void drawLabels(PageDrawing& drawing, const PageLayout& page, std::string_view title);

}  // namespace kiv
