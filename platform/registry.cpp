#include "platform/registry.h"

namespace platform {

std::string_view NameOf(RegistryRoot root) {
  switch (root) {
    case RegistryRoot::kClassesRoot:
      return "HKEY_CLASSES_ROOT";
    case RegistryRoot::kCurrentUser:
      return "HKEY_CURRENT_USER";
    case RegistryRoot::kLocalMachine:
      return "HKEY_LOCAL_MACHINE";
    case RegistryRoot::kUsers:
      return "HKEY_USERS";
  }
  return {};
}

}  // namespace platform
