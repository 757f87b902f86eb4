#!/bin/bash
# Runs a Windows program (the arguments) under Wine. CMake puts it before every test program of the
# Windows build.
#
# It has a Wine prefix of its own, so that neither the user's Windows programs nor their settings
# are touched; TARNWERK_WINEPREFIX names another one. The prefix is set up at the first use. The
# Wine server stays for a minute after the last program, since its start costs more than most tests.
set -euo pipefail

export WINEPREFIX=${TARNWERK_WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/tarnwerk/wine-prefix}
export WINEDEBUG=${TARNWERK_WINEDEBUG:--all}
# No offers to download .NET or a browser engine, no entries in the user's menus.
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d'
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

[ -e "$WINEPREFIX/set-up-done" ] || SetUpPrefix
wineserver --persistent=60 2>/dev/null || true
exec wine "$@"
