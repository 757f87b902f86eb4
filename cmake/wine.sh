#!/bin/bash
# Runs a Windows program (the arguments) under Wine. CMake puts it before every test program of the
# Windows build.
#
# It has a Wine prefix of its own in the build tree, so that neither the user's Windows programs nor
# their settings are touched; TARNWERK_WINEPREFIX names another one. It is set up at the first use,
# which takes a while. The Wine server stays for a minute after the last program, since its start
# costs more than most tests.
set -euo pipefail

WINEPREFIX=${TARNWERK_WINEPREFIX:-$(cd "$(dirname "$0")/.." && pwd)/build/wine-prefix}
export WINEPREFIX
export WINEDEBUG=${TARNWERK_WINEDEBUG:--all}
# No offers to download .NET or a browser engine, no entries in the user's menus, and no debugger
# whose window would keep a crashed program alive.
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d'
# Wine reads file names in the character set of the locale, and there are Chinese ones.
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

# The programs that Wine starts beside the first one keep its output open for as long as they live;
# whoever waited for the end of that output would wait for them. So the first one is none of ours.
StartServer() {
    if wineserver --persistent=60 </dev/null >/dev/null 2>&1; then
        wine cmd /c exit </dev/null >/dev/null 2>&1
    fi
}

[ -e "$WINEPREFIX/set-up-done" ] || SetUpPrefix
StartServer
exec wine "$@"
