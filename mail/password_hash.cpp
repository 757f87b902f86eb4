#include "mail/password_hash.h"

#include <argon2.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <random>

namespace ModMail {
namespace {

constexpr std::uint32_t kRounds = 2;
constexpr std::uint32_t kKilobytes = 19456;
constexpr std::uint32_t kLanes = 1;
constexpr std::uint32_t kSaltBytes = 16;
constexpr std::uint32_t kHashBytes = 32;

// What a hash of these costs begins with.
constexpr std::string_view kBegin = "$argon2id$v=19$m=19456,t=2,p=1$";

// Of a password that nobody knows. It is calculated in place of a hash that is not there.
constexpr const char* kNobodysHash =
    "$argon2id$v=19$m=19456,t=2,p=1$MDEyMzQ1Njc4OWFiY2RlZg$"
    "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA";

std::array<std::uint8_t, kSaltBytes> NewSalt() {
  std::random_device random;
  std::uniform_int_distribution<unsigned> byte(0, 255);
  std::array<std::uint8_t, kSaltBytes> salt{};
  std::generate(salt.begin(), salt.end(), [&] { return static_cast<std::uint8_t>(byte(random)); });
  return salt;
}

bool MatchesHash(const std::string& hash, std::string_view password) {
  const int result = argon2id_verify(hash.c_str(), password.data(), password.size());
  if (result == ARGON2_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  return result == ARGON2_OK;
}

// Looks at every byte of `typed`, so that the time does not tell how much of it is right.
bool IsSame(std::string_view plain, std::string_view typed) {
  volatile unsigned difference = plain.size() == typed.size() ? 0U : 1U;
  for (std::size_t i = 0; i < typed.size(); ++i) {
    const char own = plain.empty() ? '\0' : plain[i % plain.size()];
    difference = difference | static_cast<unsigned>(static_cast<unsigned char>(own ^ typed[i]));
  }
  return difference == 0;
}

}  // namespace

std::string HashOfPassword(std::string_view password, std::error_code& error) {
  const auto salt = NewSalt();
  std::string text(
      argon2_encodedlen(kRounds, kKilobytes, kLanes, kSaltBytes, kHashBytes, Argon2_id), '\0');
  const int result =
      argon2id_hash_encoded(kRounds, kKilobytes, kLanes, password.data(), password.size(),
                            salt.data(), salt.size(), kHashBytes, text.data(), text.size());
  if (result != ARGON2_OK) {
    error = std::make_error_code(std::errc::not_enough_memory);
    return {};
  }
  text.resize(text.find('\0'));
  return text;
}

bool IsStoredPassword(const StoredPassword& stored, std::string_view password) {
  const bool isHash = stored.plain.empty() && stored.hash.starts_with(kBegin);
  const bool matchesHash = MatchesHash(isHash ? stored.hash : kNobodysHash, password);
  const bool matchesPlain = IsSame(stored.plain, password) && !stored.plain.empty();
  return isHash ? matchesHash : matchesPlain;
}

}  // namespace ModMail
