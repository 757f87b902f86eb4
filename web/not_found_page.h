#pragma once

#include <string>

namespace ModWeb {

/// The page that is sent in place of one that is missing or may not be read.
std::string BuildNotFoundPage();

}  // namespace ModWeb
