#include "diagnostics/system_facts.h"

namespace kiv {

std::set<std::string> filesOf(const SystemFact& system) {
  std::set<std::string> files;
  for (const StaffFact& staff : system.staves) {
    files.insert(staff.file);
  }
  return files;
}

}  // namespace kiv
