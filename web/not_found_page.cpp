#include "web/not_found_page.h"

#include <array>

namespace ModWeb {
namespace {

// Clients know this page byte for byte: the irregular blanks, "text-html" and the divided sentences
// must not be corrected.
constexpr std::array kLines = {
    R"(<html>)",
    R"()",
    R"(<head>)",
    R"(<style>)",
    R"(a:link          {font:8pt/11pt verdana; color:red; text-decoration:none})",
    R"(a:visited       {font:8pt/11pt verdana; color:red; text-decoration:none})",
    R"(a:hover          {font:8pt/11pt verdana; color:red; text-decoration:underline})",
    R"(</style>)",
    R"(<meta HTTP-EQUIV="Content-Type" Content="text-html; charset=Windows-1252">)",
    R"(<title>HTTP 404 Not Found</title>)",
    R"(</head>)",
    R"()",
    R"(<body bgcolor="#FFFFFF">)",
    R"(<p><font face="Verdana, Arial, Helvetica, sans-serif" size="2"><b><font color="#FF0000">The)",
    R"(  page cannot be found </font></b></font></p>)",
    R"(<p>&nbsp;</p>)",
    R"(<p><font face="Verdana, Arial, Helvetica, sans-serif" size="1">The page you are)",
    R"(  looking for might have been removed, had its name changed, or is temporarily)",
    R"(  unavailable. </font></p>)",
    R"(<p align="center">&nbsp;</p>)",
    R"(<p align="center"><font size="1" face="Verdana, Arial, Helvetica, sans-serif" )"
    R"(color="#0000FF"><i><font color="#000000">HTTP)",
    R"(  404 - File not found</font></i></font></p>)",
    R"(</body>)",
    R"(</html>)",
};

}  // namespace

std::string BuildNotFoundPage() {
  std::string page;
  for (const char* line : kLines) page += std::string(line) + "\r\n";
  return page + "\r\n\r\n";
}

}  // namespace ModWeb
