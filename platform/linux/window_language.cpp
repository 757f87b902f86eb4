#include "platform/window_language.h"

#include <libintl.h>
#include <locale.h>

#include <initializer_list>

namespace platform {

void UseLanguageOfUser() {
  for (const int category : {LC_CTYPE, LC_COLLATE, LC_MESSAGES, LC_TIME}) setlocale(category, "");
  // Where the C library's own translations are looked for.
  bindtextdomain("libc", "/nonexistent");
}

}  // namespace platform
