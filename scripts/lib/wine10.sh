# Wine 10 out of Debian 13's packages, unpacked into a folder of the cache: for ARM64, under an emulator of its processor,
# and for x64, as a second Wine. Nothing is installed, and nothing but apt-get's own check of signatures is trusted.
# shellcheck shell=bash

wine10_tools=(patchelf:patchelf /usr/share/keyrings/debian-archive-keyring.gpg:debian-archive-keyring)
# Without libfontconfig1 Wine's desktop starts itself without end.
wine10_packages=(wine64 libwine libc6 libgcc-s1 libfreetype6 libbrotli1 libbz2-1.0 libpng16-16t64 zlib1g libfontconfig1
    libexpat1 fontconfig-config)

# wine10_apt FOLDER ARGUMENT...: apt-get with lists of its own.
wine10_apt() {
    local at=$1/apt
    shift
    apt-get -q -o Dir::State::Lists="$at/lists" -o Dir::State::status="$at/status" -o Dir::Cache="$at/cache" \
        -o Dir::Etc::SourceList="$at/sources.list" -o Dir::Etc::SourceParts=- -o APT::Sandbox::User=root \
        -o APT::Architecture=amd64 -o APT::Architectures=amd64,arm64 -o Acquire::Languages=none -o Acquire::Retries=3 \
        "$@"
}

# fetch_wine10 ARCHITECTURE FOLDER: the packages into FOLDER/packages; those that are there already stay.
fetch_wine10() {
    local mirror signed='signed-by=/usr/share/keyrings/debian-archive-keyring.gpg' wanted
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Codename: bookworm' | sort -u | head -n 1)
    mkdir -p "$2/apt/lists/partial" "$2/apt/cache/archives/partial" "$2/packages"
    : >"$2/apt/status"
    echo "deb [arch=$1 $signed] ${mirror:-http://deb.debian.org/debian} trixie main" >"$2/apt/sources.list"
    wanted=("${wine10_packages[@]/%/:$1}")
    if [ "$1" = arm64 ]; then
        echo "deb [arch=amd64 $signed] ${mirror:-http://deb.debian.org/debian} bookworm main" >>"$2/apt/sources.list"
        wanted+=(qemu-user-static:amd64)
    else
        wanted+=(libunwind8:amd64 liblzma5:amd64 libz-mingw-w64)
    fi
    wine10_apt "$2" --error-on=any update && cd "$2/packages" && wine10_apt "$2" download "${wanted[@]}"
}

# unpack_wine10 ARCHITECTURE FOLDER. The loader of programs has its fixed place in the system, where another system's is:
# programs are told to take the one in the folder, and its libraries.
unpack_wine10() {
    local top=$2/root package program bin=$2/root/usr/lib/wine loader libraries
    rm -rf "$top"
    for package in "$2"/packages/*.deb; do
        case $package in
            */qemu-user-static_*) dpkg-deb --fsys-tarfile "$package" | tar -x -C "$2" --strip-components=3 ./usr/bin/qemu-aarch64-static ;;
            *) dpkg-deb -x "$package" "$top" ;;
        esac
    done
    case $1 in
        arm64) loader=$top/usr/lib/ld-linux-aarch64.so.1 libraries=$top/usr/lib/aarch64-linux-gnu ;;
        amd64) loader=$top/usr/lib64/ld-linux-x86-64.so.2 libraries=$top/usr/lib/x86_64-linux-gnu ;;
    esac
    for program in wine64 wineserver64; do
        patchelf --set-interpreter "$loader" --force-rpath --set-rpath "$libraries" "$bin/$program"
        [ "$1" = amd64 ] || emulate "$bin/$program" "$2/qemu-aarch64-static"
    done
    [ "$1" = arm64 ] || place_zlib "$top"
    # Debian's is a script that starts the server of the system's own Wine.
    cp --remove-destination "$bin/wineserver64" "$bin/wineserver"
}

# place_zlib TOP: what installing the package does. Wine takes a library for its own by a mark behind the first 64 bytes.
place_zlib() {
    local from=$1/usr/x86_64-w64-mingw32/lib/zlib1.dll
    {
        head -c 64 "$from"
        printf 'Wine builtin DLL\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0'
        tail -c +97 "$from"
    } >"$1/usr/lib/x86_64-linux-gnu/wine/x86_64-windows/zlib1.dll"
}

# emulate PROGRAM EMULATOR: a script in its place, as Wine starts its programs by their paths. A processor with branch
# target identification would stop Wine at its first system call.
emulate() {
    python3 "$root/scripts/drop_property_note.py" "$1"
    mv "$1" "$1.elf"
    printf '#!/bin/sh\nexec "%s" -cpu cortex-a72 -0 "$0" "%s" "$@"\n' "$2" "$1.elf" >"$1"
    chmod +x "$1"
}

make_wine10() {
    fetch_wine10 "$1" "$2" || { echo "dev: Wine 10 for $1 cannot be had from Debian's archive"; return 1; }
    unpack_wine10 "$1" "$2"
    rm -rf "$2/packages" "$2/apt"
    touch "$2/complete"
}

# ensure_wine10 ARCHITECTURE (arm64 or amd64): scripts/wine-run takes that Wine from here on.
ensure_wine10() {
    local key folder
    ensure_packages "${wine10_tools[@]}"
    key=$(printf '%s\n' "${wine10_packages[@]}" "$(declare -f fetch_wine10 unpack_wine10 place_zlib emulate)" | sha256sum | cut -c1-8)
    folder=$cache/wine10-$1-$key
    if [ ! -e "$folder/complete" ]; then
        mkdir -p "$folder"
        step "Fetching Wine 10 for $1 (about 150 MB)" make_wine10 "$1" "$folder"
    fi
    export DIALWRIGHT_WINE=$folder/root
}
