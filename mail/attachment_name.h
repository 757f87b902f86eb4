#pragma once

// The file name under which an attachment is kept. The name comes from whoever sent the message, so
// nothing of it is trusted: the result is always one name in the folder where it is used.

#include <string>
#include <string_view>

namespace ModMail {

/// The name that the bytes of a "filename=" value stand for: an encoded word decoded, else in the
/// system code page, UTF-8 or GBK, whichever it is valid in.
std::string AttachmentName(std::string_view value);

/// `name` without anything that could make it another folder's, a device's or no name at all:
/// characters that no file name may hold become "_", a device's name and the one that unfinished
/// files have (mail/whole_file.h) get one in front, blanks and dots at the end go, and what is too
/// long for a file system is shortened in front of its extension. An empty name becomes "_".
std::string HarmlessFileName(std::string_view name);

}  // namespace ModMail
