#include "platform/media_types.h"

#include "platform/windows/registry.h"

namespace platform {

std::string MediaTypeOfEnding(std::string_view ending) {
  constexpr std::uint32_t kClassesRoot = 0x80000000;
  std::error_code error;
  const RegistryKey key = RegistryKey::Open(kClassesRoot, "." + std::string(ending), error);
  std::string type = key.QueryText("Content Type", error);
  return error ? std::string() : type;
}

}  // namespace platform
