#pragma once

#include "platform/win32/windows_api.h"

// After the header that it needs.
#include <objbase.h>

namespace kiv {

/// COM, usable on this thread for as long as this lives.
class Apartment {
 public:
  explicit Apartment(DWORD model = COINIT_APARTMENTTHREADED) : result_(CoInitializeEx(nullptr, model)) {}
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() {
    if (SUCCEEDED(result_)) {
      CoUninitialize();
    }
  }

 private:
  HRESULT result_;
};

}  // namespace kiv
