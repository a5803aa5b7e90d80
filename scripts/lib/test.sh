# Testing, formatting and tidying.
# shellcheck shell=bash

format_all() { our_files '*.cpp' '*.hpp' '*.h' '*.c' | xargs -r clang-format-19 "$@"; }

command_format() {
    refuse_arguments "$@"
    ensure_packages clang-format-19:clang-format-19
    cd "$root"
    format_all -i
}

run_tidy() { python3 "$root/scripts/tidy.py" --root "$root" --build "$root/build/x64-release" --stamps "$cache/tidy" "$@"; }

command_tidy() {
    case ${1:-} in
        "" | --all) ;;
        *) refuse_arguments "$@" ;;
    esac
    ensure_tools "${test_tools[@]}"
    cd "$root"
    build_preset x64-release
    run_tidy "$@"
}

# ctest_preset PRESET FILTER [CTEST-OPTION...]: prints the runner's own lines. A filter may match nothing in one of the
# builds. More at a time than the smallest machine has processors, as many tests only wait.
ctest_preset() {
    local preset=$1 filter=$2
    shift 2
    say "== Testing $preset"
    local choice=(--no-tests=error)
    [ -z "$filter" ] || choice=(--no-tests=ignore -R "$filter")
    ctest --test-dir "$root/build/$preset" -j 4 --output-on-failure "${choice[@]}" "$@" 9>&- ||
        die "tests of $preset failed"
}

test_modules() {
    ensure_modules DIALWRIGHT_EDITOR_MODULES "$root/tests/editors"
    ensure_modules DIALWRIGHT_DOCS_MODULES "$root/tests/docs"
    ensure_modules DIALWRIGHT_BINDING_MODULES "$root/tests/bindings" --os=win32 --cpu=x64 --force
}

# test_here [FILTER]: everything, but of ARM64 a small part.
test_here() {
    step "Checking the format" format_all --dry-run --Werror
    build_preset x64-release
    build_preset arm64-release
    build_preset x64-debug
    build_fuzz
    step "Running clang-tidy" run_tidy
    start_wine test null
    keep_desktop_up "$root/build/x64-release/bin/practice_target.exe"
    ctest_preset x64-debug "${1:-}"
    ctest_preset x64-release "${1:-}"
    smoke_on_arm64 "${1:-}"
}

refuse_test_arguments() {
    while [ $# -gt 0 ]; do
        case "$1 ${2:-}" in
            "--filter "?* | "--arch arm64" | "--wine 10") shift 2 ;;
            --filter\ *) say "dev: --filter takes one regular expression"; exit 2 ;;
            --arch\ *) say "dev: --arch takes arm64; x64 is what is tested without it"; exit 2 ;;
            --wine\ *) say "dev: --wine takes 10; Debian's own is what is used without it"; exit 2 ;;
            *) refuse_arguments "$@" ;;
        esac
    done
}

command_test() {
    refuse_test_arguments "$@"
    local filter='' where=test_here started=$SECONDS
    while [ $# -gt 0 ]; do
        case $1 in
            --filter) filter=$2 ;;
            --arch) where=test_on_arm64 ;;
            # ARM64 programs run in no other.
            --wine) [ "$where" != test_here ] || where=test_under_wine10 ;;
        esac
        shift 2
    done
    ensure_tools "${test_tools[@]}" "${fuzz_tools[@]}"
    test_modules
    cd "$root"
    "$where" "$filter"
    say "All green in $((SECONDS - started)) s."
}
