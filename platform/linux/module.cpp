#include "platform/module.h"

#include <dlfcn.h>

namespace platform {

void* FindInModule(const std::filesystem::path& file, const char* symbol, std::string& reason) {
  void* module = dlopen(file.c_str(), RTLD_NOW | RTLD_GLOBAL);
  void* found = module == nullptr ? nullptr : dlsym(module, symbol);
  if (found == nullptr) reason = dlerror();
  return found;
}

}  // namespace platform
