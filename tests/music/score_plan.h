#pragma once

#include <vector>

#include <rapidcheck.h>

/// A piece of music as the numbers that it is written from. Every choice of them is a piece.
namespace kiv::test::score {

struct InstrumentPlan {
  int transposition = 0;  ///< in fifths
  bool hasKeys = true;    ///< not the percussion
  bool hasOneLine = false;
  int clef = 0;
  int plays = 0;  ///< the systems in which it plays, as bits
};

struct BarPlan {
  int meter = 0;      ///< 0 keeps the time, others change it
  int key = 0;        ///< the same
  int shape = 0;      ///< split, cadenza, empty, or ordinary
  int barline = 0;    ///< at its end
  int lineBreak = 0;  ///< after it, if it is 0
  int seed = 0;       ///< of the rhythms
};

struct Plan {
  bool hasPickup = false;
  bool isOpen = false;  ///< no barline ends the last bar
  int braced = 0;       ///< instruments that a bracket joins, from the top
  std::vector<InstrumentPlan> instruments;
  std::vector<BarPlan> bars;
};

/// Any plan.
rc::Gen<Plan> plans();

}  // namespace kiv::test::score
