# Fuzzing: the pure parts natively, the exports under Wine. See docs/fuzzing.md.
# shellcheck shell=bash

fuzz_tools=(clang++-19:clang-19 /usr/lib/llvm-19/include/c++/v1/vector:libc++-19-dev
    /usr/lib/llvm-19/lib/libc++abi.so:libc++abi-19-dev
    /usr/lib/llvm-19/lib/clang/19/lib/linux/libclang_rt.fuzzer-x86_64.a:libclang-rt-19-dev)

build_fuzz() {
    local folder=$root/build/fuzz
    [ -e "$folder/build.ninja" ] ||
        step "Configuring the fuzz targets" cmake -S "$root/fuzz" -B "$folder" -G Ninja -D CMAKE_CXX_COMPILER=clang++-19
    step "Building the fuzz targets" cmake --build "$folder"
}

run_fuzz() { python3 "$root/scripts/fuzz.py" --state "$cache/fuzz" "$@"; }

# Of what needs no run: fuzz.py knows its own options and refuses others.
wants_no_run() {
    local option
    for option in "$@"; do
        case $option in
            --table | --help | -h) return 0 ;;
        esac
    done
    return 1
}

command_fuzz() {
    cd "$root"
    if wants_no_run "$@"; then
        run_fuzz "$@"
        return
    fi
    ensure_tools "${fuzz_tools[@]}" /usr/lib/wine/wine64:wine64
    build_fuzz
    build_preset x64-release fuzz_exports practice_target
    start_wine fuzz null
    # Hours may pass, and others want to build meanwhile.
    exec 9>&-
    keep_desktop_up "$root/build/x64-release/bin/practice_target.exe"
    say "== Fuzzing"
    local result=0
    # Not the end of this script: Wine is to be stopped.
    run_fuzz "$@" || result=$?
    return "$result"
}
