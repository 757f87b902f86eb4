# Third-party libraries, each as an interface target.
find_package(Threads REQUIRED)

# Asio is header-only, so the Windows build can use the headers of the Linux package. They are
# copied into the build tree, since the cross compiler must not see all of /usr/include.
find_path(ASIO_INCLUDE_DIR asio.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(COPY ${ASIO_INCLUDE_DIR}/asio ${ASIO_INCLUDE_DIR}/asio.hpp
     DESTINATION ${CMAKE_BINARY_DIR}/third_party/asio)
add_library(asio INTERFACE)
target_include_directories(asio SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/third_party/asio)
# Whether Asio uses aligned_alloc depends on the headers included before its own. Without this, one
# source could free in one way what another allocated in the other.
target_compile_definitions(asio INTERFACE
  ASIO_STANDALONE ASIO_NO_DEPRECATED ASIO_DISABLE_STD_ALIGNED_ALLOC)
target_link_libraries(asio INTERFACE Threads::Threads)
if(WIN32)
  target_link_libraries(asio INTERFACE ws2_32 mswsock)
endif()

# The window toolkit. Linux uses Debian's package. For Windows there is none, so a script builds the
# toolkit at the first configuration on a machine.
if(WIN32)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/cmake/windows_toolkit.sh
                  OUTPUT_VARIABLE windowsToolkit OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
  set(wxConfig ${windowsToolkit}/bin/wx-config --static=yes)
else()
  find_program(WX_CONFIG NAMES wx-config-3.2 wx-config REQUIRED)
  set(wxConfig ${WX_CONFIG} --version=3.2 --toolkit=gtk3)
endif()

function(ask_wx_config result)
  execute_process(COMMAND ${wxConfig} ${ARGN} OUTPUT_VARIABLE answer
                  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(answer UNIX_COMMAND "${answer}")
  set(${result} ${answer} PARENT_SCOPE)
endfunction()

# Its include directories are system directories, to silence their warnings. Resource files get
# directories and definitions only: windres does not know the compiler's other flags.
ask_wx_config(wxFlags --cxxflags)
ask_wx_config(wxLibraries --libs core base)
# Each program decides whether it has a console; the test programs have one.
list(FILTER wxLibraries EXCLUDE REGEX "^-mwindows$|--subsystem,windows$")
add_library(wx INTERFACE)
foreach(flag ${wxFlags})
  if(flag MATCHES "^-I(.+)")
    target_include_directories(wx SYSTEM INTERFACE ${CMAKE_MATCH_1})
  elseif(flag MATCHES "^-D(.+)")
    target_compile_definitions(wx INTERFACE ${CMAKE_MATCH_1})
  else()
    target_compile_options(wx INTERFACE $<$<COMPILE_LANGUAGE:CXX>:${flag}>)
  endif()
endforeach()
target_link_libraries(wx INTERFACE ${wxLibraries})

# QR codes: Debian's package, and for Windows a static build of its source.
add_library(qrcodegen INTERFACE)
if(WIN32)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/cmake/windows_qrcodegen.sh
                  OUTPUT_VARIABLE windowsQrcodegen OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
  target_include_directories(qrcodegen SYSTEM INTERFACE ${windowsQrcodegen}/include)
  target_link_libraries(qrcodegen INTERFACE ${windowsQrcodegen}/lib/libqrcodegencpp.a)
else()
  find_library(QRCODEGEN_LIBRARY qrcodegencpp REQUIRED)
  target_link_libraries(qrcodegen INTERFACE ${QRCODEGEN_LIBRARY})
endif()

# Hashes of passwords: the same.
add_library(argon2 INTERFACE)
if(WIN32)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/cmake/windows_argon2.sh
                  OUTPUT_VARIABLE windowsArgon2 OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
  target_include_directories(argon2 SYSTEM INTERFACE ${windowsArgon2}/include)
  target_link_libraries(argon2 INTERFACE ${windowsArgon2}/lib/libargon2.a)
else()
  find_library(ARGON2_LIBRARY argon2 REQUIRED)
  target_link_libraries(argon2 INTERFACE ${ARGON2_LIBRARY})
endif()

# The reader of HTTP requests, compiled in: on Debian 13 its static library; Debian 12 has its sources
# in C, which serve both systems.
if(NOT WIN32)
  find_library(LLHTTP_LIBRARY libllhttp.a)
endif()
if(LLHTTP_LIBRARY)
  find_path(LLHTTP_INCLUDE_DIR llhttp.h REQUIRED)
  add_library(llhttp INTERFACE)
  target_include_directories(llhttp SYSTEM INTERFACE ${LLHTTP_INCLUDE_DIR})
  target_link_libraries(llhttp INTERFACE ${LLHTTP_LIBRARY})
else()
  find_path(LLHTTP_INCLUDE_DIR llhttp.h PATHS /usr/share/include/llhttp NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  add_library(llhttp STATIC
    /usr/share/llhttp/api.c /usr/share/llhttp/http.c /usr/share/llhttp/llhttp.c)
  target_include_directories(llhttp SYSTEM PUBLIC ${LLHTTP_INCLUDE_DIR})
  target_compile_options(llhttp PRIVATE -w)
  set_target_properties(llhttp PROPERTIES POSITION_INDEPENDENT_CODE ON)
endif()

# GoogleTest as GTest::gtest, GTest::gmock, GTest::gtest_main and GTest::gmock_main. Debian's
# libraries are for g++ on Linux; for other compilers Debian's sources are built.
if(TARNWERK_TESTS)
  if(NOT WIN32 AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    find_package(GTest REQUIRED)
  else()
    set(INSTALL_GTEST OFF)
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/third_party/googletest
                     EXCLUDE_FROM_ALL SYSTEM)
    foreach(library gtest gmock gtest_main gmock_main)
      target_compile_options(${library} PRIVATE -w)
      set_target_properties(${library} PROPERTIES CXX_CLANG_TIDY "" FOLDER third_party)
    endforeach()
  endif()
endif()
