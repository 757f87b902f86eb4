# shellcheck shell=bash
# Shared by the packages of both systems. Sourced with the project's root as the current directory.
set -euo pipefail
shopt -s inherit_errexit
export LC_ALL=C.UTF-8 TZ=UTC
umask 022

# The version is in CMakeLists.txt only.
ProjectVersion() {
    local version
    version=$(sed -n 's/^project(Tarnwerk VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    printf '%s\n' "${version:?CMakeLists.txt names no version}"
}

# Files in packages have the time of the last commit, so that builds are reproducible.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH
version=$(ProjectVersion)
day=$(date -d "@$SOURCE_DATE_EPOCH" +%F)

# MakeGuide FOLDER: writes the user's guide under the name that the program's help looks for.
MakeGuide() { packaging/make_guide.py docs/guide.zh-CN.md "$1/使用说明.html"; }

# FillIn FILE.in: prints the file with version and date filled in.
FillIn() { sed "s/@VERSION@/$version/g; s/@DATE@/$day/g" "$1"; }

SetTimes() { find "$1" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +; }
