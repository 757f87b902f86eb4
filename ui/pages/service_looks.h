#pragma once

// What distinguishes the three services in the window: the fixed names of their controls, pictures
// and captions. The pages are built from this table.

#include "core/service.h"

namespace ui {

struct ServiceLooks {
  const char* picture;  // in ui/art
  const char* title;
  const char* purpose;  // explains the title in a line
  const char* idle;     // the result label before the first start
  const char* log;      // the file shown below the connections
  bool canMove;         // the main folder, with one button

  // The names of the controls.
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

/// A service as its pictures show it: failed is off after a failed start.
enum class ServiceState { kOff, kOn, kFailed };

/// The picture in ui/art.
const char* PictureOf(ServiceState state);

}  // namespace ui
