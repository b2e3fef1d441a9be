#include "platform/win32/shell_object.h"

#include <array>
#include <memory>
#include <string_view>

#include "platform/win32/apartment.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_programs.h"
#include "platform/win32/windows_api.h"

namespace kiv {
namespace {

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};
using Dispatch = std::unique_ptr<IDispatch, Releaser>;

/// An argument or a result of a late-bound call.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&value_); }

  VARIANT* get() { return &value_; }

 private:
  VARIANT value_;
};

/// The number that a script sees: its own where it has one for the failure.
std::int32_t numberOf(HRESULT result) {
  constexpr std::int32_t cannotMakeObject = 429;
  if (result == CO_E_CLASSSTRING || result == REGDB_E_CLASSNOTREG) {
    return cannotMakeObject;
  }
  return HRESULT_FACILITY(result) == FACILITY_CONTROL ? HRESULT_CODE(result) : result;
}

/// What a called object reports about its failure.
class Exception {
 public:
  Exception() = default;
  Exception(const Exception&) = delete;
  Exception& operator=(const Exception&) = delete;
  ~Exception() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }

  EXCEPINFO* get() { return &info_; }

  ShellFailure failure() {
    if (info_.pfnDeferredFillIn != nullptr) {
      info_.pfnDeferredFillIn(&info_);
    }
    return {info_.wCode != 0 ? static_cast<std::int32_t>(info_.wCode) : numberOf(code()), text()};
  }

 private:
  HRESULT code() const { return info_.scode != 0 ? info_.scode : DISP_E_EXCEPTION; }
  std::string text() const {
    if (SysStringLen(info_.bstrDescription) != 0) {
      const std::string text = narrow({info_.bstrDescription, SysStringLen(info_.bstrDescription)}, CP_ACP);
      return text.substr(0, text.find_last_not_of("\r\n ") + 1);
    }
    return systemMessage(static_cast<DWORD>(code()));
  }

  EXCEPINFO info_{};
};

ShellFailure failureOf(HRESULT result) {
  return {numberOf(result), systemMessage(static_cast<DWORD>(result))};
}

HRESULT createShell(const wchar_t* name, Dispatch& shell) {
  CLSID identifier{};
  HRESULT result = CLSIDFromProgID(name, &identifier);
  void* object = nullptr;
  if (SUCCEEDED(result)) {
    constexpr DWORD anywhere = CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER;
    result = CoCreateInstance(identifier, nullptr, anywhere, IID_IDispatch, &object);
  }
  if (SUCCEEDED(result)) {
    shell.reset(static_cast<IDispatch*>(object));
  }
  return result;
}

/// shell.Run(command, style, True)
HRESULT callRun(IDispatch& shell, const std::string& command, WindowStyle style, Exception& exception) {
  std::wstring name = L"Run";
  LPOLESTR names = name.data();
  DISPID run = 0;
  const HRESULT known = shell.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &run);
  if (FAILED(known)) {
    return known;
  }
  const std::wstring line = wide(command);
  Variant text;
  V_VT(text.get()) = VT_BSTR;
  V_BSTR(text.get()) = SysAllocStringLen(line.data(), static_cast<UINT>(line.size()));
  if (V_BSTR(text.get()) == nullptr) {
    return E_OUTOFMEMORY;
  }
  // Late-bound calls pass their arguments from the last to the first.
  std::array<VARIANT, 3> arguments{};
  V_VT(&arguments[0]) = VT_BOOL;
  V_BOOL(&arguments[0]) = VARIANT_TRUE;
  V_VT(&arguments[1]) = VT_I4;
  V_I4(&arguments[1]) = static_cast<LONG>(style);
  arguments[2] = *text.get();
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  Variant exitCode;
  return shell.Invoke(run, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, exitCode.get(), exception.get(),
                      nullptr);
}

}  // namespace

std::optional<ShellFailure> runThroughShellObject(const std::string& command, WindowStyle style,
                                                  const wchar_t* shellObject) {
  const Apartment apartment;
  Dispatch shell;
  HRESULT result = createShell(shellObject, shell);
  if (FAILED(result)) {
    const DWORD error = startAndWait(command, style);
    return error == ERROR_SUCCESS ? std::nullopt : std::optional(failureOf(HRESULT_FROM_WIN32(error)));
  }
  Exception exception;
  result = callRun(*shell, command, style, exception);
  if (result == DISP_E_EXCEPTION) {
    return exception.failure();
  }
  return FAILED(result) ? std::optional(failureOf(result)) : std::nullopt;
}

}  // namespace kiv
