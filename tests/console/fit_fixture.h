#pragma once

#include <string>

#include "tests/console/convert_fixture.h"

namespace kiv::test {

/// Two pages whose conversion gives a rest staff that does not fit the music.
class ConsoleFit : public ConsoleConvert {
 protected:
  void SetUp() override {
    addPage("x1.mus", duo);
    addPage("x2.mus", solo);
  }

  static inline const std::string duo =
      "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\ntimesignature 2 at 17 upper 4 lower 4\n"
      "note 2 at 30 duration 4\nbarline 2 at 60 spans 1\n"
      "staff 1 at 0 size 1 lines 5 instrument 102\nclef 1 at 2\ntimesignature 1 at 17 upper 4 lower 4\n"
      "note 1 at 30 duration 4\nbarline 1 at 0 spans 2\nbarline 1 at 60 spans 1\n";
  // The second bar is too short.
  static inline const std::string solo =
      "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\nnote 1 at 20 duration 4\nbarline 1 at 0 spans 1\n"
      "barline 1 at 50 spans 1\nnote 1 at 60 duration 3\nbarline 1 at 100 spans 1\n";
  static inline const std::string wrongRest =
      "kivsys: WORK0002.MUS: warning: rest staff 102: the rest lasts 4 quarters, the music of the bar 3 quarters "
      "(system "
      "2, bar 2) [bar-rest-length]\n";
  static inline const std::string hint =
      "kivsys: note: convert --fit makes rest staves, braces and brackets that fit the music\n";
};

/// The same, and a third page that ends the conversion.
class ConsoleFitAfterAFailure : public ConsoleFit {
 protected:
  void SetUp() override {
    ConsoleFit::SetUp();
    // No beat is in its last bar, which ends the plain conversion.
    addPage("x3.mus",
            "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\nnote 1 at 20 duration 4\nbarline 1 at 0 spans 1\n"
            "barline 1 at 60 spans 1\nbarline 1 at 62 spans 1\n");
  }

  Names words{"convert", "x1.mus", "x2.mus", "x3.mus"};
};

}  // namespace kiv::test
