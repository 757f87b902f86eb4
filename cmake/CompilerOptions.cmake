# Every target of ours links this one for its warnings, sanitizers and system version.
add_library(tarnwerk_options INTERFACE)
target_compile_options(tarnwerk_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # g++ 12 sees overlapping copies in joined std::strings where there are none.
  target_compile_options(tarnwerk_options INTERFACE -Wno-restrict)
endif()
target_include_directories(tarnwerk_options INTERFACE ${CMAKE_SOURCE_DIR})

if(TARNWERK_SANITIZE)
  target_compile_options(tarnwerk_options INTERFACE
    -fsanitize=${TARNWERK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(tarnwerk_options INTERFACE -fsanitize=${TARNWERK_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # With sanitizers g++ sees unset members in the library's own std::function.
    target_compile_options(tarnwerk_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

# A fuzzer links this one too; everything it calls is compiled to report its paths to the engine.
option(TARNWERK_FUZZ "Build the fuzzers (clang only)" OFF)
if(TARNWERK_FUZZ)
  target_compile_options(tarnwerk_options INTERFACE -fsanitize=fuzzer-no-link)
  add_library(tarnwerk_fuzzer INTERFACE)
  target_link_options(tarnwerk_fuzzer INTERFACE -fsanitize=fuzzer)
endif()

if(WIN32)
  # Windows 8.1 and later: the oldest systems that the supported toolkit still knows.
  target_compile_definitions(tarnwerk_options INTERFACE
    _WIN32_WINNT=0x0603 WINVER=0x0603 UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
  # Without the time of linking, which would make each program another one.
  target_link_options(tarnwerk_options INTERFACE -static -Wl,--no-insert-timestamp)
endif()

find_program(TARNWERK_CCACHE ccache)
if(TARNWERK_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TARNWERK_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${TARNWERK_CCACHE})
endif()
