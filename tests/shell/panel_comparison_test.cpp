#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "shell/panel.h"
#include "shell/panel_layout.h"
#include "tests/support/differing_members.h"

namespace kiv::test {
namespace {

// Tests show by one comparison that nothing of the panel has changed.

TEST(ComparedPanel, DiffersInEachControl) {
  for (const ControlLayout& control : panelLayout()) {
    Panel other;
    (other.*control.control).text += " ";
    EXPECT_FALSE(Panel() == other) << control.name;
  }
}

TEST(ComparedPanel, DiffersInWhatIsNoControl) {
  const std::vector<std::function<void(Panel&)>> changes = {
      [](Panel& panel) { panel.title = "other"; }, [](Panel& panel) { panel.place.left = 1; },
      [](Panel& panel) { panel.screenWidth = 1; }, [](Panel& panel) { panel.screenHeight = 1; },
      [](Panel& panel) { panel.visible = false; }, [](Panel& panel) { panel.txtFirstResultFileTag = "C:\\"; },
  };
  std::vector<Panel> others;
  for (const auto& change : changes) {
    others.push_back(changed(Panel(), change));
  }
  expectComparesEveryMember(Panel(), others);
}

TEST(ComparedPanel, AControlDiffersInEachMember) {
  expectComparesEveryMember(Control{"text", "tooltip", true, true, false}, {{"other", "tooltip", true, true, false},
                                                                            {"text", "other", true, true, false},
                                                                            {"text", "tooltip", false, true, false},
                                                                            {"text", "tooltip", true, false, false},
                                                                            {"text", "tooltip", true, true, true}});
}

TEST(ComparedPanel, AWindowDiffersInEachNumber) {
  expectComparesEveryMember(WindowPlace{1, 2, 3, 4}, {{9, 2, 3, 4}, {1, 9, 3, 4}, {1, 2, 9, 4}, {1, 2, 3, 9}});
}

}  // namespace
}  // namespace kiv::test
