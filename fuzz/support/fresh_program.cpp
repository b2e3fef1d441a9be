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

}  // namespace

FreshProgram::FreshProgram() : host(theHost()), program(theProgram()) {
  static const Panel panel;
  host.restart();
  program.settings = {};
  program.panel = panel;
  program.names = {};
  program.musFileName.clear();
  program.items = {};
  program.firstClefs = {};
  program.pages = {};
  program.systems = {};
  program.order = {};
  program.braces = {};
}

}  // namespace kiv::fuzz
