#pragma once

// Paths inside the program are Windows-style UTF-8 texts with "\" as separator. Here, and only
// here, they are converted to and from the system's own form.
//
// A text that contains a NUL is not a path, since the system would see another name than the one
// that was checked; nor is a text longer than any path of the system. Both become the empty path,
// which fails wherever a file or folder is expected.

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

/// A path as the system's calls take it. std::filesystem::path converts to it, and takes it apart
/// when it is made of it, which costs as much as a call.
using NativeString = std::filesystem::path::string_type;

/// The same as NativePath, for a call.
NativeString NativeText(std::string_view pathText);

/// The native path of `pathText`, exactly as written. Linux: "\" and "/" are both separators.
/// Windows: absolute, and with the "\\?\" prefix if it is too long without.
std::filesystem::path NativePath(std::string_view pathText);

/// The native path of an existing entry: as written, else with its components looked up ignoring
/// case. From the first component that is not found on, the path stays as written, so that a new
/// file gets the given name. Windows ignores case itself. The cost is proportional to the length of
/// the path and to the entries of folders that have to be read (platform/linux/folder_names.h).
std::filesystem::path ExistingPath(std::string_view pathText);

/// The path text of a native path.
std::string PathText(const std::filesystem::path& native);

/// The text of a name in a directory.
std::string NameTextOf(const std::filesystem::path::string_type& name);

/// The path text of a path that a person or a settings file gave in the system's own notation. On
/// Windows they are the same.
std::string PathTextFromUser(std::string_view path);

/// A path text in the system's own notation, to be shown or saved.
std::string PathTextForUser(std::string_view pathText);

}  // namespace platform
