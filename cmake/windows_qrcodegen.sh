#!/bin/bash
# Prints the prefix of QR-Code-generator for the Windows build, a static library (windows_libraries.sh).
. "$(dirname "$0")/windows_libraries.sh"

readonly kSources=(qr-code-generator)

BuildAll() {
    # Debian's part of the source is only packaging, and not every mirror has it.
    FetchUpstream
    cd "$work/qr-code-generator/cpp"
    mkdir -p "$work/stage$prefix"/{include/qrcodegen,lib}
    ${launcher}"$kHost-g++-posix" -O2 -std=c++11 -c qrcodegen.cpp -o qrcodegen.o
    "$kHost-ar" rcs "$work/stage$prefix/lib/libqrcodegencpp.a" qrcodegen.o
    cp qrcodegen.hpp "$work/stage$prefix/include/qrcodegen"
}

Provide windows-qrcodegen
