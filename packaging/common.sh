# shellcheck shell=bash
# What the packages of both systems share. Sourced, with the project's root as current directory.
set -euo pipefail
shopt -s inherit_errexit
export LC_ALL=C.UTF-8 TZ=UTC
umask 022

# The one place of the version.
ProjectVersion() {
    local version
    version=$(sed -n 's/^project(Tarnwerk VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    printf '%s\n' "${version:?CMakeLists.txt names no version}"
}

# No file in a package is younger than the last commit, whenever it was built.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH
version=$(ProjectVersion)
day=$(date -d "@$SOURCE_DATE_EPOCH" +%F)

# MakeGuide FOLDER: the user's guide under the name by which the program's help finds it.
MakeGuide() { packaging/make_guide.py docs/guide.zh-CN.md "$1/使用说明.html"; }

# FillIn FILE.in: to standard output, with the version and the day in their places.
FillIn() { sed "s/@VERSION@/$version/g; s/@DATE@/$day/g" "$1"; }

SetTimes() { find "$1" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +; }
