#include "platform/win32/win32_user.h"

#include <future>
#include <string>

#include <gtest/gtest.h>

#include "tests/window/started_program.h"

namespace kiv::test {
namespace {

using Captions = std::vector<std::string>;

/// A message box of this process, shown by another thread.
class ShownBox {
 public:
  ShownBox(Icon icon, const std::string& text, Buttons buttons)
      : answer_(std::async(std::launch::async, [=] {
          return Win32User().show({code::other, icon, buttons, text, {}, {}});
        })) {
    constexpr std::chrono::milliseconds poll(20);
    constexpr int polls = 3000;
    for (int i = 0; i < polls && !box_ && answer_.wait_for(poll) == std::future_status::timeout; ++i) {
      box_ = boxOf(GetCurrentProcessId());
    }
  }

  const std::optional<Box>& box() const { return box_; }
  HICON icon() const {
    for (HWND child = GetWindow(box_->window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
      if (const LRESULT icon = SendMessageA(child, STM_GETICON, 0, 0); classOf(child) == "Static" && icon != 0) {
        return reinterpret_cast<HICON>(icon);
      }
    }
    return nullptr;
  }
  Answer answerOf(const std::string& caption) {
    EXPECT_TRUE(click(*box_, caption)) << caption;
    return answer_.get();
  }

 private:
  std::future<Answer> answer_;
  std::optional<Box> box_;
};

TEST(Win32User, MessageIsInABoxOfTheProgramsName) {
  ShownBox shown(Icon::information, "First line.\r\nSecond line.", Buttons::ok);
  ASSERT_TRUE(shown.box());
  EXPECT_EQ(shown.box()->title, "KivSystem");
  EXPECT_EQ(shown.box()->text, "First line.\r\nSecond line.");
  EXPECT_EQ(shown.box()->buttons, Captions{"OK"});
  EXPECT_EQ(GetWindow(shown.box()->window, GW_OWNER), nullptr);
  EXPECT_EQ(shown.answerOf("OK"), Answer::ok);
}

TEST(Win32User, ZeroByteDoesNotEndTheText) {
  ShownBox shown(Icon::information, std::string("before\0after", 12), Buttons::ok);
  ASSERT_TRUE(shown.box());
  EXPECT_EQ(shown.box()->text, "before after");
  shown.answerOf("OK");
}

TEST(Win32User, QuestionIsAnsweredByItsButtons) {
  for (const auto& [caption, answer] : {std::pair{"Yes", Answer::yes}, std::pair{"No", Answer::no}}) {
    ShownBox shown(Icon::exclamation, "Convert?", Buttons::yesNo);
    ASSERT_TRUE(shown.box());
    EXPECT_EQ(shown.box()->buttons, (Captions{"Yes", "No"}));
    EXPECT_EQ(shown.answerOf(caption), answer);
  }
}

TEST(Win32User, BoxHasTheIconOfItsKind) {
  const auto iconOf = [](Icon kind) {
    ShownBox shown(kind, "Text", Buttons::ok);
    HICON icon = shown.icon();
    shown.answerOf("OK");
    return icon;
  };
  EXPECT_EQ(iconOf(Icon::information), LoadIcon(nullptr, IDI_INFORMATION));
  EXPECT_EQ(iconOf(Icon::exclamation), LoadIcon(nullptr, IDI_EXCLAMATION));
  EXPECT_EQ(iconOf(Icon::critical), LoadIcon(nullptr, IDI_ERROR));
  EXPECT_EQ(iconOf(Icon::none), nullptr);
  EXPECT_NE(LoadIcon(nullptr, IDI_INFORMATION), LoadIcon(nullptr, IDI_ERROR));
}

TEST(Win32User, TextsAreForAViewerProgram) {
  EXPECT_FALSE(Win32User().showText("X.TXT"));
}

TEST(Win32User, PointerIsAnHourglassWhileItIsAsked) {
  Win32User host;
  host.setPointer(Pointer::hourglass);
  EXPECT_EQ(GetCursor(), LoadCursor(nullptr, IDC_WAIT));
  host.setPointer(Pointer::normal);
  EXPECT_EQ(GetCursor(), LoadCursor(nullptr, IDC_ARROW));
}

int eventsHandled = 0;

LRESULT CALLBACK countEvents(HWND window, UINT message, WPARAM wide, LPARAM narrow) {
  eventsHandled += message == WM_APP ? 1 : 0;
  return DefWindowProcA(window, message, wide, narrow);
}

TEST(Win32User, WaitingEventsAreProcessed) {
  WNDCLASSA kind{};
  kind.lpfnWndProc = countEvents;
  kind.hInstance = GetModuleHandleA(nullptr);
  kind.lpszClassName = "KivEventTest";
  ASSERT_NE(RegisterClassA(&kind), 0);
  HWND window =
      CreateWindowExA(0, kind.lpszClassName, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, kind.hInstance, nullptr);
  ASSERT_NE(window, nullptr);
  PostMessageA(window, WM_APP, 0, 0);
  PostMessageA(window, WM_APP, 0, 0);
  EXPECT_EQ(eventsHandled, 0);
  Win32User().processEvents();
  EXPECT_EQ(eventsHandled, 2);
  DestroyWindow(window);
}

}  // namespace
}  // namespace kiv::test
