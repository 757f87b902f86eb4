#pragma once

// The language of what the system itself writes in windows: choosers of files and folders, the
// menus of text fields.

namespace platform {

/// Makes it the user's. Must be called before the window system starts. Affects nothing else:
/// numbers and the system's error messages, which clients and logs get, stay as they are.
void UseLanguageOfUser();

}  // namespace platform
