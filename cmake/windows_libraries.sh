# shellcheck shell=bash
# What the scripts share that build libraries for x86_64-w64-mingw32 from Debian's sources, where
# Debian has no such package. Sourced by one that defines kSources (source packages), BuildAll, and
# says Provide NAME [VARIABLE...] at its end; the variables are what else the recipe depends on.
#
# Provide prints the prefix in which the libraries are. The first run on a machine builds them; every
# later run prints the prefix at once. It is the last line on standard output, and the only one.
#
# The result is kept per user, not per clone, under a hash of the recipe (sources, options, build
# steps, compiler version), so a change of it builds a new one beside the old. The machine's own apt settings,
# lists and caches are neither changed nor needed to hold source archives, and no rights of root
# are needed. TARNWERK_DEBIAN_MIRROR names another mirror than deb.debian.org.
set -euo pipefail
shopt -s inherit_errexit

readonly kHost=x86_64-w64-mingw32
readonly kMirror=${TARNWERK_DEBIAN_MIRROR:-http://deb.debian.org/debian}
readonly kKeyring=/usr/share/keyrings/debian-archive-keyring.gpg

# The main archive alone: the sources of the security archive are not always to be had.
readonly kSuite=bookworm

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

# The arguments are names of variables.
RecipeHash() {
    {
        declare -p kHost kSuite kSources "$@"
        declare -f BuildAndInstall BuildAll
        "$kHost-g++-posix" -dumpfullversion
    } | sha256sum | cut -c1-16
}

# An apt of our own in $1. The file is read after the machine's settings (so proxies stay as they
# are there) and takes back the hooks that would act on the machine's own lists.
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

# The arguments are options of apt-get source.
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

# The upstream archives alone, without what Debian changes in them.
FetchUpstream() {
    Download --tar-only
    local archive
    for archive in *.orig.tar.*; do
        mkdir "$work/${archive%%_*}"
        tar -xf "$archive" -C "$work/${archive%%_*}" --strip-components=1
    done
}

# $1 is the unpacked source, the rest are options of its configure script.
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
        flock -n 9 || { Say "another build is under way, waiting for it"; flock 9; }
    fi
    if [ ! -d "$prefix" ]; then
        # Beside its destination, so that the move at the end is one rename: a broken-off build never
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
        # Not in a condition: there bash ignores "set -e", inside the parentheses too.
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
