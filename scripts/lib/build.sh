# Building: the presets of CMakePresets.json, and the release files in dist/.
# shellcheck shell=bash

# build_preset PRESET [TARGET]: the compiler builds its own C++ library at the first use of each kind of build,
# which takes minutes and prints warnings of its own; they end in the log.
build_preset() {
    local preset=$1 folder=$root/build/$1
    shift
    # A folder that was configured for another compiler, or before the headers of the tools came: begin anew.
    local key="$DIALWRIGHT_ZIG_DIR, tools"
    if [ "$(cat "$folder/configured-for" 2>/dev/null)" != "$key" ]; then
        rm -rf "$folder"
        step "Configuring $preset (minutes when the compiler is new)" cmake -S "$root" --preset "$preset"
        printf '%s\n' "$key" >"$folder/configured-for"
    fi
    step "Building $preset" cmake --build "$folder" "${@/#/--target=}"
}

# What we release.
release_targets=(dialwright dialwright_import_library dialwright_tool dialwright_verify practice_target)

# dist_of PRESET FOLDER
dist_of() {
    local from=$root/build/$1 to=$root/dist/$2
    mkdir -p "$to"
    cp "$from"/bin/{Dialwright.dll,Dialwright.pdb,practice_target.exe} "$to/"
    cp "$from"/bin/dialwright{,-host,-verify,-verify-plain}.exe "$to/"
    cp "$from"/src/api/{Dialwright.lib,libDialwright.dll.a} "$to/"
}

command_build() {
    refuse_arguments "$@"
    ensure_tools
    cd "$root"
    build_preset x64-release "${release_targets[@]}"
    build_preset arm64-release "${release_targets[@]}"
    dist_of x64-release x64
    dist_of arm64-release arm64
    cp -R "$root/include" "$root/dist/"
    say "The libraries and programs are in dist/x64 and dist/arm64, the header in dist/include."
}
