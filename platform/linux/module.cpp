#include "platform/module.h"

#include <dlfcn.h>

namespace platform {

void* FindInModule(const char* file, const char* symbol) {
  void* module = dlopen(file, RTLD_NOW | RTLD_GLOBAL);
  return module == nullptr ? nullptr : dlsym(module, symbol);
}

}  // namespace platform
