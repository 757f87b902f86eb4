#pragma once

// What distinguishes the three services in the window: the names of their controls, which are
// fixed, their pictures and captions. The pages are built from this table.

#include "core/service.h"

namespace ui {

struct ServiceLooks {
  const char* picture;  // in ui/art
  const char* title;
  const char* purpose;  // a line for users who do not know the word in the title
  const char* idle;     // the result label before the first start
  const char* log;      // the file shown under the connections

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

}  // namespace ui
