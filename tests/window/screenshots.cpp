// Takes pictures of the panel at work and leaves them in the current folder: screenshots FOLDER_WITH_PAGES.

#include <array>
#include <fstream>
#include <iostream>

#include "tests/window/panel_on_screen.h"

namespace kiv::test {
namespace {

void writeBitmap(const std::string& file, HDC memory, HBITMAP bitmap, int width, int height) {
  BITMAPINFOHEADER info{};
  info.biSize = sizeof info;
  info.biWidth = width;
  info.biHeight = height;
  info.biPlanes = 1;
  info.biBitCount = 32;
  std::string pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, '\0');
  BITMAPINFO wanted{info, {}};
  GetDIBits(memory, bitmap, 0, static_cast<UINT>(height), pixels.data(), &wanted, DIB_RGB_COLORS);
  BITMAPFILEHEADER head{};
  head.bfType = 0x4D42;
  head.bfOffBits = sizeof head + sizeof info;
  head.bfSize = static_cast<DWORD>(head.bfOffBits + pixels.size());
  std::ofstream out(file, std::ios::binary);
  out.write(reinterpret_cast<const char*>(&head), sizeof head);
  out.write(reinterpret_cast<const char*>(&info), sizeof info);
  out.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
}

/// What the screen shows where the window stands.
void picture(HWND window, const std::string& file) {
  RECT place{};
  GetWindowRect(window, &place);
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
  SelectObject(memory, before);
  writeBitmap(file, memory, bitmap, width, height);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
}

/// Waits until everything in the window is painted.
void settle(HWND window) {
  DWORD_PTR result = 0;
  SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 10'000, &result);
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 10'000, &result);
}

int takePictures(const std::string& pages) {
  const std::string folder = "C:\\MUSIC";
  CreateDirectoryA(folder.c_str(), nullptr);
  SetCurrentDirectoryA(folder.c_str());
  std::string names;
  for (const std::string& name : namesIn(pages)) {
    if (name.ends_with(".MUS")) {
      writeFile(name, readFileContent(pages + "\\" + name));
      names += folder + "\\" + name + " 1\r\n";
    }
  }
  writeFile("NAMES.TXT", names);
  writeFile("KIVPROJ.PRO", "MusDirectory=" + folder + "\r\nNamesFile=" + folder + "\\NAMES.TXT\r\n");
  PanelOnScreen panel;
  if (panel.window() == nullptr) {
    std::cerr << "the panel does not come up\n";
    return 1;
  }
  settle(panel.window());
  picture(panel.window(), pages + "\\panel.bmp");
  panel.click(&Panel::cmdRun);
  const auto result = panel.process().nextBox();
  settle(panel.window());
  settle(result->window);
  picture(result->window, pages + "\\result.bmp");
  panel.process().close(*result, "OK");
  panel.waitUntilIdle();
  settle(panel.window());
  picture(panel.window(), pages + "\\analyzed.bmp");
  panel.click(&Panel::cmdConvert);
  const auto created = panel.process().nextBox();
  settle(created->window);
  picture(created->window, pages + "\\created.bmp");
  panel.process().close(*created, "OK");
  panel.waitUntilIdle();
  panel.click(&Panel::cmdReturn);
  panel.process().exitCode();
  return 0;
}

}  // namespace
}  // namespace kiv::test

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: screenshots FOLDER_WITH_PAGES\n";
    return 2;
  }
  return kiv::test::takePictures(argv[1]);
}
