#!/bin/bash
# Prints the prefix of libqrencode for the Windows build, a static library (windows_libraries.sh).
. "$(dirname "$0")/windows_libraries.sh"

readonly kSources=(qrencode)

BuildAll() {
    # Debian's part of the source is only packaging, and not every mirror has it.
    FetchUpstream
    # BuildAndInstall expects it at the top.
    ln -s use/config.guess "$work/qrencode/config.guess"
    BuildAndInstall qrencode --enable-static --disable-shared --without-tools --without-png --disable-pthread
}

Provide windows-qrencode
