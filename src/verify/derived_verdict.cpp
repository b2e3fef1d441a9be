#include "verify/derived_verdict.h"

#include <algorithm>

#include "verify/numbers.h"

namespace kiv::proof {

void DerivedVerdict::addStaff(const PageRow& staff) {
  // The numbers are those that a record shows, with 7 digits.
  const auto system = wholeIn(generalForm(staff.item[par::system]));
  const auto instrument = wholeIn(generalForm(staff.item[par::instrument]));
  if (system && instrument) {
    instruments_[*system] += std::to_string(*instrument) + ",";
  } else if (!failure_) {
    const std::string what = system ? "an instrument" : "a system";
    failure_ = Finding{staff.file, staff.number, "is of " + what + " whose number 16 bits do not hold"};
  }
}

std::string DerivedVerdict::text() const {
  const bool isConsistent = std::all_of(instruments_.begin(), instruments_.end(), [&](const auto& system) {
    return system.second == instruments_.begin()->second;
  });
  return std::string("CONSISTENCY=") + (isConsistent ? "YES" : "NO") +
         "\r\nMULTIFILE=" + (isMultifile_ ? "YES" : "NO") + "\r\n";
}

}  // namespace kiv::proof
