#include "bench/literal/insert_staff.h"
#include "bench/literal/mus_file.h"

namespace kiv::literal {

void readStaff(Conversion& run, std::int16_t staff, std::int16_t newStaff) {
  MusFile file(run.host, run.musFileName);
  while (true) {
    const Status readStatus = file.readItem();
    if (readStatus == Status::endOfItems) {
      return;
    }
    if (readStatus == Status::structuralError) {
      run.host.fatal("Structural error in MUS file: " + run.musFileName +
                     "\r\nTry to recover with KivValid/KivRecover.\r\nCurrent folder = " + run.host.currentFolder() +
                     "\r\nItem number = " + std::to_string(file.itemsInFile()));
    }
    if (file.cur().par[par::staff] == static_cast<float>(staff)) {
      file.cur().par[par::staff] = newStaff;
      run.items.store_item(run.host, file.cur());
    }
  }
}

}  // namespace kiv::literal
