# Writes the C++ source OUTPUT, a map from the base name of every SVG file in FOLDER to its text:
#
#   cmake -D FOLDER=ui/art -D OUTPUT=pictures.cpp -P EmbedPictures.cmake
file(GLOB pictures ${FOLDER}/*.svg)
set(entries "")
foreach(picture ${pictures})
  get_filename_component(name ${picture} NAME_WE)
  file(READ ${picture} text)
  string(APPEND entries "    {\"${name}\", R\"svg(${text})svg\"},\n")
endforeach()
file(WRITE ${OUTPUT} "// Made from ui/art by cmake/EmbedPictures.cmake.
#include \"ui/controls/art.h\"

namespace ui {

const std::map<std::string_view, const char*>& Pictures() {
  static const std::map<std::string_view, const char*> pictures = {
${entries}  };
  return pictures;
}

}  // namespace ui
")
