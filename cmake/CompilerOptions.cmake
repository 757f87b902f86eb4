# The warnings, sanitizers and system version of every target.
add_library(tarnwerk_options INTERFACE)
target_compile_options(tarnwerk_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # g++ 12 reports overlapping copies in concatenated std::strings where there are none.
  target_compile_options(tarnwerk_options INTERFACE -Wno-restrict)
endif()
target_include_directories(tarnwerk_options INTERFACE ${CMAKE_SOURCE_DIR})
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND NOT WIN32)
  # Nothing replaces our functions at load time, so code for a module may be inlined like any other.
  add_compile_options(-fno-semantic-interposition)
endif()

if(TARNWERK_SANITIZE)
  target_compile_options(tarnwerk_options INTERFACE
    -fsanitize=${TARNWERK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(tarnwerk_options INTERFACE -fsanitize=${TARNWERK_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # With sanitizers g++ reports uninitialised members in the library's std::function.
    target_compile_options(tarnwerk_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

# Fuzzers link this one too. Everything they call is instrumented to report coverage.
option(TARNWERK_FUZZ "Build the fuzzers (clang only)" OFF)
if(TARNWERK_FUZZ)
  target_compile_options(tarnwerk_options INTERFACE -fsanitize=fuzzer-no-link)
  add_library(tarnwerk_fuzzer INTERFACE)
  target_link_options(tarnwerk_fuzzer INTERFACE -fsanitize=fuzzer)
endif()

# Hardening, also of the libraries that are compiled here. The tests and benchmarks run what ships.
# The sanitizers have checks of their own, which fortified functions would hide.
option(TARNWERK_HARDEN "Harden the programs against memory faults" ON)
if(TARNWERK_HARDEN AND NOT TARNWERK_SANITIZE AND CMAKE_BUILD_TYPE STREQUAL Release)
  # The compiler may come with a level of its own.
  add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  if(WIN32)
    # The compiler's own library has what the checks call, and is linked on request.
    add_link_options(-fstack-protector-strong -Wl,--nxcompat,--dynamicbase,--high-entropy-va)
  else()
    add_compile_options(-fstack-clash-protection)
    add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i.86)$")
      add_compile_options(-fcf-protection)
    elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
      add_compile_options(-mbranch-protection=standard)
    endif()
  endif()
endif()

if(WIN32)
  # Windows 8.1, the oldest version that the toolkit supports.
  target_compile_definitions(tarnwerk_options INTERFACE
    _WIN32_WINNT=0x0603 WINVER=0x0603 UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
  # No timestamp, so that builds are reproducible.
  target_link_options(tarnwerk_options INTERFACE -static -Wl,--no-insert-timestamp)
endif()

find_program(TARNWERK_CCACHE ccache)
if(TARNWERK_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TARNWERK_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${TARNWERK_CCACHE})
endif()
