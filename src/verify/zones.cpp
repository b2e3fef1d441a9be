#include "verify/zones.h"

#include "verify/numbers.h"

namespace kiv::proof {

std::string numberField(float number) {
  const std::string form = generalForm(number);
  return (form.front() == '-' ? "" : " ") + form + " ";
}

std::string inZones(Machine& machine, const std::vector<std::string>& fields) {
  constexpr std::size_t zone = 14;
  std::string line = "* ";
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) {
      const std::size_t columns = machine.characterCount(line);
      line.append((columns / zone + 1) * zone - columns, ' ');
    }
    line += fields[i];
  }
  return line;
}

}  // namespace kiv::proof
