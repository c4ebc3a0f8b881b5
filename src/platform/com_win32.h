#pragma once

#include "platform/windows_system.h"
// Needs the one above.
#include <objbase.h>

/// The system's component objects, for those files of this folder that use some.
namespace veldra {

/// Holds a COM object and lets go of it.
template <typename Interface>
class CComObject {
 public:
  CComObject() = default;
  ~CComObject() {
    if (object_ != nullptr) object_->Release();
  }
  CComObject(const CComObject&) = delete;
  CComObject& operator=(const CComObject&) = delete;

  Interface* operator->() const { return object_; }
  Interface* Get() const { return object_; }
  Interface** Receive() { return &object_; }

  /// The object of CLASS_ID that offers INTERFACE_ID.
  HRESULT Create(const CLSID& class_id, const IID& interface_id) {
    return CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, interface_id, reinterpret_cast<void**>(&object_));
  }
  /// The same object's other side.
  template <typename Other>
  HRESULT As(const IID& interface_id, CComObject<Other>& other) const {
    return object_->QueryInterface(interface_id, reinterpret_cast<void**>(other.Receive()));
  }

 private:
  Interface* object_ = nullptr;
};

/// COM, for as long as this lives; other parts of the program may have started it already, in their way.
class CComUse {
 public:
  CComUse() : started_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
  ~CComUse() {
    if (started_) CoUninitialize();
  }
  CComUse(const CComUse&) = delete;
  CComUse& operator=(const CComUse&) = delete;

 private:
  bool started_;
};

/// Steps that are done one after the other until the first that fails.
class CComSteps {
 public:
  template <typename Step>
  CComSteps& Then(Step step) {
    if (SUCCEEDED(result_)) result_ = step();
    return *this;
  }
  HRESULT Result() const { return result_; }

 private:
  HRESULT result_ = S_OK;
};

}  // namespace veldra
