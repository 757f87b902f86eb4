# shellcheck shell=bash
# Shared by the packages of both systems. Sourced with the project's root as the current directory.
set -euo pipefail
shopt -s inherit_errexit
export LC_ALL=C.UTF-8 TZ=UTC
umask 022

Fail() {
    echo "packaging: $*" >&2
    exit 1
}

# The number of the version is in CMakeLists.txt only.
ProjectVersion() {
    local version
    version=$(sed -n 's/^project(Tarnwerk VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    printf '%s\n' "${version:?CMakeLists.txt names no version}"
}

# The full version: the number if the commit has the tag of that release, such as v1.2.0. Any other
# build sorts between the releases before and after it: 1.2.0+git20261126.abc1234, and before the
# first release 0.1.0~git20261126.abc1234.
FullVersion() {
    local tag commit
    commit=git$(date -d "@$SOURCE_DATE_EPOCH" +%Y%m%d).$(git rev-parse HEAD | cut -c1-7)
    if ! tag=$(git describe --tags --abbrev=0 --match 'v[0-9]*' 2>/dev/null); then
        printf '%s~%s\n' "$version" "$commit"
    elif [ "$(git rev-parse "$tag^{commit}")" != "$(git rev-parse HEAD)" ]; then
        printf '%s+%s\n' "${tag#v}" "$commit"
    elif [ "$tag" = "v$version" ]; then
        printf '%s\n' "$version"
    else
        Fail "the tag is $tag, the version in CMakeLists.txt $version"
    fi
}

version=$(ProjectVersion)
# Files in packages have the time of the last commit, so that builds are reproducible. The archive of
# the sources (packaging/make source) has no commits, but a file with both.
if [ -e packaging/version ]; then
    read -r fullVersion SOURCE_DATE_EPOCH <packaging/version
else
    SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
    fullVersion=$(FullVersion)
fi
if [ -n "${TARNWERK_PACKAGE_VERSION:-}" ]; then # packaging/make --version
    version=$TARNWERK_PACKAGE_VERSION
    fullVersion=$TARNWERK_PACKAGE_VERSION
fi
export SOURCE_DATE_EPOCH
day=$(date -d "@$SOURCE_DATE_EPOCH" +%F)

# MakeGuide FOLDER: writes the user's guide under the name that the program's help looks for.
MakeGuide() { packaging/make_guide.py docs/guide.zh-CN.md "$1/使用说明.html"; }

# FillIn FILE.in: prints the file with version and date filled in.
FillIn() { sed "s/@VERSION@/$version/g; s/@DATE@/$day/g" "$1"; }

SetTimes() { find "$1" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +; }

# LicenceTexts FILE...: the whole texts of the licences to which these copyright files of Debian only
# refer, for packages that have no /usr/share/common-licenses beside them.
LicenceTexts() {
    local text
    grep -hoE '/usr/share/common-licenses/[A-Za-z]+(-[0-9.]*[0-9])?' "$@" | sort -u |
        while read -r text; do realpath "$text"; done | sort -u |
        while read -r text; do
            printf '\n\n==== %s ====\n\n' "${text##*/}"
            cat "$text"
        done
}
