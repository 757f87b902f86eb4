# Cross-builds for 64-bit ARM with Debian's cross compiler and the libraries of its architecture
# arm64. Some of these cannot be installed beside their namesakes of this machine's architecture, so
# a Debian in a folder or container of its own is the place for it.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(PKG_CONFIG_EXECUTABLE aarch64-linux-gnu-pkg-config)
