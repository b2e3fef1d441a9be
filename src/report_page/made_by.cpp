#include "report_page/made_by.h"

#include "shell/start_up.h"
#include "shell/version.h"

namespace kiv::report {

std::string madeBy(Machine& machine, const std::string& program) {
  const LocalTime now = machine.now();
  const auto two = [](int number) { return std::string(number < 10 ? "0" : "") + std::to_string(number); };
  return std::to_string(now.year) + "-" + two(now.month) + "-" + two(now.day) + " " + two(now.hour) + ":" +
         two(now.minute) + ", " + program + " " + versionText(version::major, version::minor, version::revision);
}

}  // namespace kiv::report
