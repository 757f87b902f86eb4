#pragma once

// Passwords as salted hashes (Argon2id), in the text form of that standard:
// "$argon2id$v=19$m=19456,t=2,p=1$<salt>$<hash>". Making and checking one takes tens of
// milliseconds and 19 MiB each, so that trying many passwords on a stolen hash takes long.
//
// The functions use nothing but their arguments, so they can be called on any thread.

#include <string>
#include <string_view>
#include <system_error>

namespace ModMail {

/// A password as it is kept: in plain text, or if that is empty as a hash. Both empty: there is no
/// password, and none is right.
struct StoredPassword {
  std::string plain = {};
  std::string hash = {};
};

/// The hash with a new salt: equal passwords have different hashes. Empty on an error, such as a
/// lack of memory.
std::string HashOfPassword(std::string_view password, std::error_code& error);

/// Whether `password` is the stored one. Takes the same time whatever is stored, also for none: a
/// hash is always calculated, and a hash with other costs than those of HashOfPassword is refused.
/// Throws std::bad_alloc if there is not enough memory.
bool IsStoredPassword(const StoredPassword& stored, std::string_view password);

}  // namespace ModMail
