# shellcheck shell=bash
# Shared by the scripts that build libraries for x86_64-w64-mingw32 from Debian's sources, where
# Debian has no such package. A script sources this file, defines kSources (source packages) and
# BuildAll, and ends with Provide NAME [VARIABLE...]; the variables are further inputs of the recipe.
#
# Provide prints the prefix of the libraries, as the only line on standard output. The first run on
# a machine builds them; later runs print the prefix at once.
#
# Results are cached per user, not per clone, under a hash of the recipe (sources, options, build
# steps, compiler version), so a changed recipe builds anew beside the old result. The machine's apt
# settings, lists and caches are not changed, need not contain source archives, and root is not
# required. TARNWERK_DEBIAN_MIRROR overrides the mirror deb.debian.org.
set -euo pipefail
shopt -s inherit_errexit

readonly kHost=x86_64-w64-mingw32
readonly kMirror=${TARNWERK_DEBIAN_MIRROR:-http://deb.debian.org/debian}
readonly kKeyring=/usr/share/keyrings/debian-archive-keyring.gpg

# The main archive only: the sources of the security archive are not always available. A script may
# define another suite before it sources this file.
readonly kSuite=${kSuite:-bookworm}

Say() { printf '%s: %s\n' "$name" "$*" >&2; }

Fail() {
    Say "$*"
    exit 1
}

RequireTools() {
    local tool package missing=()
    while read -r tool package; do
        command -v "$tool" >/dev/null || missing+=("$package")
    done <<'END'
x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64-posix
dpkg-source dpkg-dev
patch patch
xz xz-utils
make make
END
    [ -e "/usr/$kHost/lib/libz.a" ] || missing+=(libz-mingw-w64-dev)
    [ ${#missing[@]} -eq 0 ] || Fail "these Debian packages are missing: ${missing[*]}"
}

# RecipeHash VARIABLE...: the hash of the recipe and the named variables.
RecipeHash() {
    {
        declare -p kHost kSuite kSources "$@"
        declare -f BuildAndInstall BuildAll
        "$kHost-g++-posix" -dumpfullversion
    } | sha256sum | cut -c1-16
}

# Sets up a private apt in $1. Its file is read after the machine's settings, so proxies are kept,
# and clears the hooks that would act on the machine's lists.
WriteAptConfiguration() {
    mkdir -p "$1"/{lists,archives}/partial
    printf 'deb-src [signed-by=%s] %s %s main\n' "$kKeyring" "$kMirror" "$kSuite" >"$1/sources.list"
    cat >"$1/apt.conf" <<END
#clear APT::Update::Pre-Invoke;
#clear APT::Update::Post-Invoke;
#clear APT::Update::Post-Invoke-Success;
APT::Sandbox::User "root";
Dir::Etc::SourceList "$1/sources.list";
Dir::Etc::SourceParts "-";
Dir::State::Lists "$1/lists";
Dir::Cache "$1";
Dir::Cache::Archives "$1/archives";
END
}

# Download OPTION...: the options are those of apt-get source.
Download() {
    WriteAptConfiguration "$work/apt"
    apt-get -c "$work/apt/apt.conf" -q update
    mkdir "$work/sources"
    cd "$work/sources"
    apt-get -c "$work/apt/apt.conf" -q --only-source --download-only "$@" source "${kSources[@]}"
}

FetchSources() {
    Download
    local description
    for description in *.dsc; do
        dpkg-source --no-check -x "$description" "$work/${description%%_*}"
    done
}

# Unpacks the upstream archives only, without Debian's changes.
FetchUpstream() {
    Download --tar-only
    local archive
    for archive in *.orig.tar.*; do
        mkdir "$work/${archive%%_*}"
        tar -xf "$archive" -C "$work/${archive%%_*}" --strip-components=1
    done
}

# BuildAndInstall SOURCE OPTION...: the options are those of the configure script.
BuildAndInstall() {
    cd "$work/$1"
    ./configure --prefix="$prefix" --host="$kHost" --build="$(./config.guess)" \
        CC="${launcher}$kHost-gcc-posix" CXX="${launcher}$kHost-g++-posix" \
        CFLAGS=-O2 CXXFLAGS=-O2 \
        CPPFLAGS="-I$work/stage$prefix/include" LDFLAGS="-L$work/stage$prefix/lib" "${@:2}"
    make -j"$(nproc)"
    make install DESTDIR="$work/stage"
}

Provide() {
    local cache log status
    name=$1
    RequireTools
    cache=${XDG_CACHE_HOME:-$HOME/.cache}/tarnwerk
    prefix=$cache/$name-$(RecipeHash "${@:2}")
    if [ ! -d "$prefix" ]; then
        mkdir -p "$cache"
        exec 9>"$cache/$name.lock"
        flock -n 9 || { Say "waiting for another build"; flock 9; }
    fi
    if [ ! -d "$prefix" ]; then
        # Beside the destination, so that the final move is a rename: an interrupted build never
        # looks like a finished one.
        work=$(mktemp -d "$cache/$name-build.XXXXXX")
        trap 'rm -rf "$work"' EXIT
        launcher=
        if command -v ccache >/dev/null; then
            launcher='ccache '
            export CCACHE_BASEDIR=$work CCACHE_NOHASHDIR=1
        fi
        log=$cache/$name.log
        Say "building once for this machine (log: $log)"
        renice -n 10 -p $BASHPID >/dev/null || true
        # Not in a condition: bash would ignore "set -e" there, even inside the parentheses.
        set +e
        (set -e; BuildAll) >"$log" 2>&1 9>&-
        status=$?
        set -e
        if [ $status -ne 0 ]; then
            tail -n 20 "$log" >&2
            Fail "the build failed, see $log"
        fi
        mv -T "$work/stage$prefix" "$prefix"
        Say "done"
    fi
    printf '%s\n' "$prefix"
}
