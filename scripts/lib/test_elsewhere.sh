# The tests on other grounds than Debian's own Wine on this processor.
# shellcheck shell=bash

# start_wine10 NAME ARCHITECTURE PRESET: a Wine 10 of its own, in which the preset's programs run.
start_wine10() {
    ensure_wine10 "$2"
    start_wine "$1" null
    keep_desktop_up "$root/build/$3/bin/practice_target.exe"
}

# test_on_arm64 [FILTER]: the ARM64 programs, under an emulator.
test_on_arm64() {
    build_preset arm64-release
    start_wine10 arm64 arm64 arm64-release
    # No more than there are processors: the emulator keeps one busy for each.
    ctest_preset arm64-release "${1:-}" -j 2
}

# test_under_wine10 [FILTER]: the x64 programs. Pictures need a screen, and the libraries of X that Wine draws with;
# fuzzing is native but for one program.
test_under_wine10() {
    build_preset x64-release
    start_wine10 wine10 amd64 x64-release
    ctest_preset x64-release "${1:-}" -LE '^(picture|fuzz)$'
}

# smoke_on_arm64 [FILTER]: a small part of the tests on ARM64, in every run. In a shell of its own, which has its own Wine.
smoke_on_arm64() (
    local folder=$root/build/arm64-release/tests/smoke
    [ -z "${1:-}" ] || ! ctest --test-dir "$folder" -N -R "$1" | grep -q '^Total Tests: 0$' || return 0
    start_wine10 arm64 arm64 arm64-release
    say "== Testing arm64-release, in short"
    ctest --test-dir "$folder" --output-on-failure --no-tests=error ${1:+-R "$1"} 9>&- || die "ARM64 does not stand the smoke test"
)
