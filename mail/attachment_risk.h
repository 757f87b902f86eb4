#pragma once

// Whether it is safe to open an attachment with the program that the system has for it.

#include <string_view>

namespace ModMail {

enum class AttachmentRisk {
  kHarmless,  // pictures, music, films, plain texts, documents without programs in them
  kUnknown,   // anything else
  kExecutes,  // the system may run it as a program
};

/// Judges by the extension, as the system does.
AttachmentRisk RiskOf(std::string_view fileName);

}  // namespace ModMail
