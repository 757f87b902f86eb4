#pragma once

#include <string>

namespace ModWeb {

/// The page that is sent where a page was asked for that is not there.
std::string BuildNotFoundPage();

}  // namespace ModWeb
