#!/usr/bin/env bash
# Where Wine itself fails as a test exits, the test runs once more. A test that fails by itself does not.
set -euo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
root=$1
mkdir -p "$scratch/usr/lib/wine"
export DIALWRIGHT_WINE=$scratch DIALWRIGHT_WINEPREFIX=$scratch/prefix
unset WINEDEBUG

# runs SAYS ARGUMENT: how often a program runs that says this the first time and fails, and passes the second time.
runs() {
    rm -f "$scratch/runs"
    cat >"$scratch/usr/lib/wine/wine64" <<END
#!/bin/sh
echo run >>"$scratch/runs"
[ "\$(wc -l <"$scratch/runs")" = 1 ] || exit 0
echo "$1" >&2
exit 1
END
    chmod +x "$scratch/usr/lib/wine/wine64"
    "$root/scripts/wine-run" a_test.exe "$2" >/dev/null 2>"$scratch/said" || echo "failed" >>"$scratch/runs"
    grep -qF "$1" "$scratch/said" || echo "what it said is lost" >>"$scratch/runs"
    tr '\n' ' ' <"$scratch/runs"
}

expect() { [ "$1" = "$2" ] || { echo "not as expected: $1"; exit 1; }; }

assertion="dlls/ntdll/unix/server.c:1046: server_get_unix_fd: Assertion 'handle' failed."
expect "$(runs "a.exe: $assertion" --gtest_filter=A.B)" "run run "
expect "$(runs "wine client error:4: partial write" --gtest_filter=A.B)" "run run "
expect "$(runs "qemu: uncaught target signal 11 (Segmentation fault) - core dumped" --gtest_filter=A.B)" "run run "
expect "$(runs "a.cpp:4: Failure" --gtest_filter=A.B)" "run failed "
expect "$(runs "a.exe: $assertion" --no-test)" "run failed "
expect "$(WINEDEBUG=-all,err+heap runs "a.exe: $assertion" --gtest_filter=A.B)" "run failed "
