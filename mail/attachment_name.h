#pragma once

// The name of the file that an attachment is unpacked to. It comes from the sender of the message
// and is not trusted: the result is always a single name in the folder where it is used.

#include <string>
#include <string_view>

namespace ModMail {

/// The text of a "filename=" value: an encoded word is decoded, other bytes are read in the first
/// of system code page, UTF-8 and GBK in which they are valid.
std::string AttachmentName(std::string_view value);

/// `name` made safe: it cannot lead to another folder or name a device. Characters that a file name
/// must not contain become "_"; device names and the name of unfinished files (mail/whole_file.h)
/// get a leading "_"; trailing blanks and dots are removed; a name too long for a file system is
/// shortened before its extension. An empty name becomes "_".
std::string HarmlessFileName(std::string_view name);

}  // namespace ModMail
