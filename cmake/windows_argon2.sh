#!/bin/bash
# Prints the prefix of libargon2 for the Windows build, a static library (windows_libraries.sh).

# It has upstream's last release, and in a form that more mirrors have.
kSuite=trixie
. "$(dirname "$0")/windows_libraries.sh"

readonly kSources=(argon2)

# Upstream's makefile knows no cross compilers. Every x86-64 processor has what opt.c needs. Without
# threads of its own, the library computes lanes one after another; the result is the same.
BuildAll() {
    local source
    FetchUpstream
    cd "$work/argon2"
    mkdir -p "$work/stage$prefix"/{include,lib}
    for source in argon2 core encoding opt thread blake2/blake2b; do
        ${launcher}"$kHost-gcc-posix" -O2 -DARGON2_NO_THREADS -Iinclude -Isrc \
            -c "src/$source.c" -o "${source##*/}.o"
    done
    "$kHost-ar" rcs "$work/stage$prefix/lib/libargon2.a" ./*.o
    cp include/argon2.h "$work/stage$prefix/include"
}

Provide windows-argon2
