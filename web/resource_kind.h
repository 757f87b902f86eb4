#pragma once

// What a resource is, by the end of its name.

#include <string_view>

namespace ModWeb {

/// Whether it is a page of the site, which ends in .htm or .html.
bool IsHtmlPage(std::string_view resource);

/// Whether it is a program for cgi-bin, which ends in .cgi or .exe.
bool IsProgram(std::string_view resource);

}  // namespace ModWeb
