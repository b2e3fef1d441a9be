#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "tests/properties/groups.h"
#include "tests/support/fixed_machine.h"

namespace kiv::test {

/// A selection of pages after a click on Analyze and one on Convert.
class GroupConversion {
 public:
  explicit GroupConversion(const Group& group, bool showNumbers = true);
  /// The conversion of all results of another.
  GroupConversion(const GroupConversion& before, bool showNumbers);

  std::size_t systems() const { return program_.systems.systemCount(); }
  /// The bytes of the page for a system, counted from 1; "" when there is none.
  std::string result(std::size_t system) const;
  bool hasResult(std::size_t system) const { return !result(system).empty(); }
  std::string input(const std::string& name) const;

  /// The page for a system in a table that holds it until the next one is read.
  ItemTable& readResult(std::size_t system);
  /// The same for an input.
  const ItemTable& readInput(const std::string& name);
  std::string writtenAgain(std::size_t system);

  /// The message that the conversion has ended with.
  const Message& lastMessage() const { return user_.messages().back(); }

  /// The results of the reference implementation from the same pages and the same analysis.
  struct Reference {
    std::vector<std::string> results;
    Message lastMessage;
  };
  Reference convertByReference() const;

 private:
  void addInput(const std::string& name, const std::string& bytes);
  void run(bool showNumbers);
  void click(void (*button)(KivSystem&));

  mutable FixedMachine machine_;
  mutable OverlayFiles files_{"C:\\KIV", machine_};
  SilentUser user_;
  NoPrograms programs_;
  KivSystem program_{{files_, user_, programs_, machine_}};
  std::string names_;
};

}  // namespace kiv::test
