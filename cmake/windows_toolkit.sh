#!/bin/bash
# Prints the prefix of the window toolkit for the Windows build: wxWidgets 3.2 and libpng as static
# libraries. The first run builds them, which takes some minutes (windows_libraries.sh).
. "$(dirname "$0")/windows_libraries.sh"

readonly kSources=(libpng1.6 wxwidgets3.2)

# SVG pictures (nanosvg, on by default) need libpng, which needs zlib. Everything disabled here is
# unused and would only make the program larger.
readonly kToolkitOptions=(
    --with-msw --disable-shared --enable-unicode --disable-debug --disable-tests --without-subdirs
    --with-nanosvg --with-zlib=sys --with-libpng=sys
    --without-libjpeg --without-libtiff --without-regex --without-liblzma
    --without-expat --disable-xrc
    --disable-html --disable-htmlhelp --disable-mshtmlhelp --disable-help
    --disable-aui --disable-propgrid --disable-ribbon --disable-richtext --disable-stc
    --without-opengl --disable-mediactrl --disable-webview --disable-webrequest
    --disable-sockets --disable-ipc --disable-protocols --disable-ftp --disable-http
    --disable-fileproto --disable-url --disable-fs_inet
)

BuildAll() {
    FetchSources
    BuildAndInstall libpng1.6 --enable-static --disable-shared --disable-tests --disable-tools
    BuildAndInstall wxwidgets3.2 "${kToolkitOptions[@]}"
    # wx-config outputs the linker flags that it was built with.
    sed -i "s|$work/stage||g" "$work/stage$prefix"/lib/wx/config/*
    ! grep -rI "$work" "$work/stage$prefix/bin" "$work/stage$prefix/lib/wx"
}

Provide windows-toolkit kToolkitOptions
