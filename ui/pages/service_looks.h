#pragma once

// What tells the three services apart in the window: the names of their controls, which are fixed,
// and their pictures and captions. Everything that is the same for all three is built once from
// this table.

#include <array>

#include "core/service.h"

namespace ui {

struct ServiceLooks {
  const char* picture;  // in ui/art
  const char* title;
  const char* purpose;  // one line for who does not know the word in the title
  const char* idle;     // the result label before the first start

  // Names of controls
  const char* frame;
  const char* selector;
  const char* selectorPicture;
  const char* selectorLabel;
  const char* result;
  const char* address;
  const char* hint;
  const char* rootDir;
  const char* start;
  const char* stop;
  const char* dns;
  const char* options;
};

const ServiceLooks& LooksOf(core::ServiceKind service);

/// In the order in which the window shows them.
inline constexpr std::array kServices = {core::ServiceKind::kWeb, core::ServiceKind::kFtp,
                                         core::ServiceKind::kMail};

/// A service's place in an array of three.
inline std::size_t IndexOf(core::ServiceKind service) { return static_cast<std::size_t>(service); }

}  // namespace ui
