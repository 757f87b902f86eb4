#include "platform/accessible.h"

#include <windows.h>

#include <initguid.h>
#include <oleacc.h>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

// Lists and trees are native controls here, which already have their roles.
LONG RoleOf(AccessibleRole role) {
  switch (role) {
    case AccessibleRole::kButton:
      return ROLE_SYSTEM_PUSHBUTTON;
    case AccessibleRole::kLink:
      return ROLE_SYSTEM_LINK;
    case AccessibleRole::kPicture:
      return ROLE_SYSTEM_GRAPHIC;
    case AccessibleRole::kItsOwn:
    case AccessibleRole::kStatusBar:
    case AccessibleRole::kTable:
    case AccessibleRole::kTree:
      break;
  }
  return 0;
}

// One per program; it keeps a description until the control is destroyed. Null if the system lacks
// the service.
IAccPropServices* Services() {
  static IAccPropServices* const services = [] {
    void* made = nullptr;
    const HRESULT result = CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                            IID_IAccPropServices, &made);
    return SUCCEEDED(result) ? static_cast<IAccPropServices*>(made) : nullptr;
  }();
  return services;
}

}  // namespace

void DescribeControl(void* control, const AccessibleLooks& looks) {
  IAccPropServices* services = Services();
  if (services == nullptr) return;
  auto* window = static_cast<HWND>(control);
  const auto client = static_cast<DWORD>(OBJID_CLIENT);
  services->SetHwndPropStr(window, client, CHILDID_SELF, PROPID_ACC_NAME,
                           WideText(looks.name).c_str());
  if (!looks.description.empty()) {
    services->SetHwndPropStr(window, client, CHILDID_SELF, PROPID_ACC_DESCRIPTION,
                             WideText(looks.description).c_str());
  }
  const LONG role = RoleOf(looks.role);
  if (role == 0) return;
  VARIANT value = {};
  value.vt = VT_I4;
  value.lVal = role;
  services->SetHwndProp(window, client, CHILDID_SELF, PROPID_ACC_ROLE, value);
}

}  // namespace platform
