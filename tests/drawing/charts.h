#pragma once

#include <string>

#include "analysis/report.h"
#include "drawing/chart.h"
#include "tests/support/fake_host.h"

namespace kiv::test {

/// A record of a report.
inline std::string record(int system, int instrument, int newStaff, const std::string& file) {
  return "SYSTEM=" + std::to_string(system) + ",INSTRID=" + std::to_string(instrument) +
         ",NEWSTAFF=" + std::to_string(newStaff) + ",STAVESUP=0,STAFF=1,FILE=C:\\M\\" + file + "\r\n";
}

/// The chart of a group with this report.
inline Chart chartOf(const std::string& report, bool allowZeroId = false) {
  FakeHost host;
  host.addFile(reportFile, "* head\r\n" + report);
  return makeChart(host, readReport(host), allowZeroId);
}

/// A chart of systems on a page each, which have the first instrument and every second one after it.
inline Chart chartOf(int systems, int instruments) {
  Chart chart;
  chart.piece = "PIECE";
  for (int i = 1; i <= instruments; ++i) {
    chart.instruments.push_back(static_cast<std::int16_t>(100 + i));
  }
  for (int i = 0; i < systems; ++i) {
    const auto index = static_cast<std::size_t>(i);
    chart.pages.push_back({"PIECE" + std::to_string(i + 1) + ".MUS", 1, index});
    ChartSystem system{index, true, {}, {}};
    for (int k = 0; k < instruments; ++k) {
      system.cells.push_back(k % 2 == 0 ? Presence::present : Presence::missing);
    }
    chart.systems.push_back(system);
  }
  return chart;
}

}  // namespace kiv::test
