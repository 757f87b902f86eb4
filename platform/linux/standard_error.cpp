#include "platform/standard_error.h"

#include <cstdio>
#include <string>

namespace platform {

void SayOnStandardError(std::string_view line) {
  std::fputs((std::string(line) + "\n").c_str(), stderr);
}

}  // namespace platform
