#include "fuzz/support/fresh_program.h"

namespace kiv::fuzz {
namespace {

MemoryHost& theHost() {
  static MemoryHost host;
  return host;
}

KivSystem& theProgram() {
  static KivSystem program(theHost());
  return program;
}

/// Clears the rows that were ever used. They are used from the first on, and each of them has a type.
void clear(ItemTable& items) {
  for (int i = 1; i <= itemLimit && items.itemPar(i, par::type) != 0; ++i) {
    for (int p = 1; p <= parameterCount; ++p) {
      items.itemPar(i, p) = 0;
    }
    items.itemText(i).clear();
  }
  items.restart();
}

}  // namespace

FreshProgram::FreshProgram() : host(theHost()), program(theProgram()) {
  static const Panel panel;
  host.restart();
  program.settings = {};
  program.panel = panel;
  program.names = {};
  program.musFileName.clear();
  clear(program.items);
  program.firstClefs = {};
  program.pages = {};
  program.systems = {};
  program.order = {};
  program.braces = {};
}

}  // namespace kiv::fuzz
