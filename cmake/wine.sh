#!/bin/bash
# wine.sh PROGRAM ARGUMENT...
#
# Runs a Windows program under Wine. CMake runs every test program of the Windows build through it.
#
# The Wine prefix is in the build tree, so the user's Windows programs and settings are not touched;
# TARNWERK_WINEPREFIX overrides it. The first use sets it up, which takes a while. The Wine server
# stays for a minute after the last program, since starting it takes longer than most tests.
set -euo pipefail

WINEPREFIX=${TARNWERK_WINEPREFIX:-$(cd "$(dirname "$0")/.." && pwd)/build/wine-prefix}
export WINEPREFIX
export WINEDEBUG=${TARNWERK_WINEDEBUG:--all}
# No offers to download .NET or a browser engine, no entries in the user's menus, and no debugger
# whose window would keep a crashed program alive.
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d'
# Wine decodes file names in the locale's character set, and some names are Chinese.
export LC_ALL=${TARNWERK_WINE_LOCALE:-C.UTF-8}

SetUpPrefix() {
    mkdir -p "$WINEPREFIX"
    exec 9>"$WINEPREFIX/set-up.lock"
    flock 9
    if [ ! -e "$WINEPREFIX/set-up-done" ]; then
        wineboot --init >/dev/null 2>&1 9>&-
        wineserver --wait 9>&-
        touch "$WINEPREFIX/set-up-done"
    fi
    exec 9>&-
}

# The helper programs that Wine starts with the first program keep that program's output open, so a
# caller reading to its end would wait for them. Hence the first program is a dummy.
StartServer() {
    if wineserver --persistent=60 </dev/null >/dev/null 2>&1; then
        wine cmd /c exit </dev/null >/dev/null 2>&1
    fi
}

[ -e "$WINEPREFIX/set-up-done" ] || SetUpPrefix
StartServer
exec wine "$@"
