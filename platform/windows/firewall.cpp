#include "platform/firewall.h"

#include <windows.h>

#include <oleauto.h>

#include <utility>

#include "platform/windows/wide_text.h"

// The objects are created by name (late binding), so that the program runs where the interface does
// not exist and needs none of its headers.

namespace platform {
namespace {

constexpr LONG kAllAddresses = 0;
constexpr LONG kAnyIpVersion = 2;

// Throws if the call failed; caught in the functions of the header.
void Check(HRESULT result) {
  if (FAILED(result)) throw std::system_error(result, std::system_category());
}

class ComLibrary {
 public:
  ComLibrary() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ~ComLibrary() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }
  ComLibrary(const ComLibrary&) = delete;
  ComLibrary& operator=(const ComLibrary&) = delete;

 private:
  HRESULT result_;
};

// Owns an argument or a result of an automation call.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  explicit Variant(LONG number) : Variant() {
    value_.vt = VT_I4;
    value_.lVal = number;
  }
  explicit Variant(bool flag) : Variant() {
    value_.vt = VT_BOOL;
    value_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
  }
  explicit Variant(std::string_view text) : Variant() {
    value_.vt = VT_BSTR;
    value_.bstrVal = SysAllocString(WideText(text).c_str());
  }
  explicit Variant(IDispatch* object) : Variant() {
    value_.vt = VT_DISPATCH;
    value_.pdispVal = object;
    if (object != nullptr) object->AddRef();
  }
  ~Variant() { VariantClear(&value_); }
  Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
  Variant& operator=(Variant&&) = delete;

  VARIANT* Raw() { return &value_; }
  bool Flag() const { return value_.vt == VT_BOOL && value_.boolVal != VARIANT_FALSE; }
  IDispatch* Object() const { return value_.vt == VT_DISPATCH ? value_.pdispVal : nullptr; }

 private:
  VARIANT value_;
};

class Object {
 public:
  explicit Object(const wchar_t* className) {
    CLSID id;
    Check(CLSIDFromProgID(className, &id));
    void* object = nullptr;
    Check(CoCreateInstance(id, nullptr, CLSCTX_ALL, IID_IDispatch, &object));
    object_ = static_cast<IDispatch*>(object);
  }
  explicit Object(const Variant& value) : object_(value.Object()) {
    if (object_ == nullptr) Check(E_NOINTERFACE);
    object_->AddRef();
  }
  ~Object() { object_->Release(); }
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  Object Get(const wchar_t* name) const { return Object(Call(name, DISPATCH_PROPERTYGET, {})); }
  bool Flag(const wchar_t* name) const { return Call(name, DISPATCH_PROPERTYGET, {}).Flag(); }
  Object Item(std::string_view key) const {
    return Object(Call(L"Item", DISPATCH_METHOD | DISPATCH_PROPERTYGET, Variant(key)));
  }
  void Set(const wchar_t* name, Variant value) const {
    Call(name, DISPATCH_PROPERTYPUT, std::move(value));
  }
  void Do(const wchar_t* name, const Object& argument) const {
    Call(name, DISPATCH_METHOD, Variant(argument.object_));
  }

 private:
  Variant Call(const wchar_t* name, WORD kind, Variant argument) const {
    DISPID member = 0;
    auto* writableName = const_cast<wchar_t*>(name);
    Check(object_->GetIDsOfNames(IID_NULL, &writableName, 1, LOCALE_SYSTEM_DEFAULT, &member));
    DISPID assigned = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {argument.Raw(), nullptr, kind == DISPATCH_PROPERTYGET ? 0U : 1U, 0};
    if (kind == DISPATCH_PROPERTYPUT) {
      parameters.rgdispidNamedArgs = &assigned;
      parameters.cNamedArgs = 1;
    }
    Variant result;
    Check(object_->Invoke(member, IID_NULL, LOCALE_SYSTEM_DEFAULT, kind, &parameters, result.Raw(),
                          nullptr, nullptr));
    return result;
  }

  IDispatch* object_;
};

Object CurrentProfile() {
  const Object manager(L"HNetCfg.FwMgr");
  const Object policy = manager.Get(L"LocalPolicy");
  return policy.Get(L"CurrentProfile");
}

void Authorize(std::string_view image, std::string_view name) {
  const Object profile = CurrentProfile();
  const Object application(L"HNetCfg.FwAuthorizedApplication");
  application.Set(L"ProcessImageFileName", Variant(image));
  application.Set(L"Name", Variant(name));
  application.Set(L"Scope", Variant(kAllAddresses));
  application.Set(L"IpVersion", Variant(kAnyIpVersion));
  application.Set(L"Enabled", Variant(true));
  const Object authorized = profile.Get(L"AuthorizedApplications");
  authorized.Do(L"Add", application);
}

// Throws if the program is not in the list.
bool IsEnabledIn(const Object& profile, std::string_view image) {
  const Object authorized = profile.Get(L"AuthorizedApplications");
  const Object entry = authorized.Item(image);
  return entry.Flag(L"Enabled");
}

}  // namespace

FirewallState LookAtFirewall(std::string_view image) {
  const ComLibrary library;
  FirewallState state;
  try {
    const Object profile = CurrentProfile();
    if (!profile.Flag(L"FirewallEnabled")) return state;
    state.kind = FirewallState::Kind::kWindows;
    // It can be told to make no exceptions for programs of its list.
    if (profile.Flag(L"ExceptionsNotAllowed")) return state;
    state.admitsThisProgram = IsEnabledIn(profile, image);
  } catch (const std::system_error&) {
    // No such firewall, or not in the list.
  }
  return state;
}

std::error_code AuthorizeProgram(std::string_view image, std::string_view name) {
  const ComLibrary library;
  try {
    Authorize(image, name);
  } catch (const std::system_error& error) {
    return error.code();
  }
  return {};
}

}  // namespace platform
