# clang: of Debian 12, or of Debian 13.
find_program(TARNWERK_CLANG NAMES clang-16 clang-19 REQUIRED)
string(REGEX REPLACE "clang-([0-9]+)$" "clang++-\\1" clangxx ${TARNWERK_CLANG})
set(CMAKE_C_COMPILER ${TARNWERK_CLANG})
set(CMAKE_CXX_COMPILER ${clangxx})
