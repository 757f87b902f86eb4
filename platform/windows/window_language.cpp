#include "platform/window_language.h"

namespace platform {

// Windows writes in the user's language without being asked.
void UseLanguageOfUser() {}

}  // namespace platform
