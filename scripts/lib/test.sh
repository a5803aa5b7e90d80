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

# ctest_preset PRESET [FILTER]: prints the runner's own lines. A filter may match nothing in one of the builds.
ctest_preset() {
    local preset=$1 filter=${2:-}
    say "== Testing $preset"
    local choice=(--no-tests=error)
    [ -z "$filter" ] || choice=(--no-tests=ignore -R "$filter")
    ctest --test-dir "$root/build/$preset" -j 2 --output-on-failure "${choice[@]}" 9>&- || die "tests of $preset failed"
}

command_test() {
    local filter=
    if [ "${1:-}" = --filter ]; then
        [ $# -eq 2 ] || { say "dev: --filter takes one regular expression"; exit 2; }
        filter=$2
    else
        refuse_arguments "$@"
    fi
    local started=$SECONDS
    ensure_tools "${test_tools[@]}" "${fuzz_tools[@]}"
    ensure_modules DIALWRIGHT_EDITOR_MODULES "$root/tests/editors"
    ensure_modules DIALWRIGHT_DOCS_MODULES "$root/tests/docs"
    ensure_modules DIALWRIGHT_BINDING_MODULES "$root/tests/bindings" --os=win32 --cpu=x64 --force
    cd "$root"
    step "Checking the format" format_all --dry-run --Werror
    build_preset x64-release
    build_preset arm64-release
    build_preset x64-debug
    build_fuzz
    step "Running clang-tidy" run_tidy
    start_wine test null
    keep_desktop_up "$root/build/x64-release/bin/practice_target.exe"
    ctest_preset x64-debug "$filter"
    ctest_preset x64-release "$filter"
    say "All green in $((SECONDS - started)) s."
}
