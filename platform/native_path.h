#pragma once

// Paths inside the program are Windows-style texts in UTF-8 ("\" separates). This is the one place
// where such a text becomes a path of the operating system, and the other way round.
//
// A text with a NUL names nothing, since the system would see another name than the program has
// checked; nor does one that is longer than any path of the system. Both become the empty path,
// which is refused wherever a file or folder is expected.

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

/// The native path that a path text names, exactly as written. Linux: "\" and "/" both separate.
/// Windows: absolute, in the form that may be longer than 260 characters where it has to be.
std::filesystem::path NativePath(std::string_view pathText);

/// The native path of something that exists: as written, or else with its components looked up
/// without regard to case. From the first one that is not found on, all are as written: so a new
/// file gets its given name. On Windows the system does this itself. Takes time in proportion to
/// the path's length, and to the entries of a folder that has to be read
/// (platform/linux/folder_names.h).
std::filesystem::path ExistingPath(std::string_view pathText);

/// A native path as a path text.
std::string PathText(const std::filesystem::path& native);

/// One name of a directory as the system has it, as text.
std::string NameTextOf(const std::filesystem::path::string_type& name);

/// A path that a person or a settings file wrote in the system's own form, as a path text. On
/// Windows it is one already.
std::string PathTextFromUser(std::string_view path);

/// A path text in the system's own form, for showing and saving.
std::string PathTextForUser(std::string_view pathText);

}  // namespace platform
