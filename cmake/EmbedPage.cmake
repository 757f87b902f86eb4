# Writes the C++ source OUTPUT, the function FUNCTION of HEADER that returns the text of FILE:
#
#   cmake -D FILE=x.html -D HEADER=web/x.h -D FUNCTION=X -D OUTPUT=x.html.cpp -P EmbedPage.cmake
file(READ ${FILE} text)
file(WRITE ${OUTPUT} "// Made from ${FILE} by cmake/EmbedPage.cmake.
#include \"${HEADER}\"

namespace ModWeb {

std::string_view ${FUNCTION}() { return R\"page(${text})page\"; }

}  // namespace ModWeb
")
