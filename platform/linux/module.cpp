#include "platform/module.h"

#include <dlfcn.h>

namespace platform {

void* FindInModule(const std::filesystem::path& file, const char* symbol) {
  void* module = dlopen(file.c_str(), RTLD_NOW | RTLD_GLOBAL);
  return module == nullptr ? nullptr : dlsym(module, symbol);
}

}  // namespace platform
