# The long run: random commands by the hundred thousand, and the tests of loading, leaving and threads for many more
# rounds.
# shellcheck shell=bash

soak_tests='*LoadAndFree*:*ProcessExit*:ManyThreads*:Crash*'

tool_soak_tests='RunProgram.TakesThousandsOfLines'

run_random_commands() {
    export DIALWRIGHT_SOAK=1
    timeout 7200 "$root/scripts/wine-run" ./soak_tests.exe
}

run_soak() {
    export DIALWRIGHT_SOAK=1
    timeout 3600 "$root/scripts/wine-run" ./trace_tests.exe --gtest_filter="$soak_tests" &&
        timeout 1800 "$root/scripts/wine-run" ./out_of_memory_tests.exe &&
        timeout 600 "$root/scripts/wine-run" ./tool_tests.exe --gtest_filter="$tool_soak_tests"
}

# expect_passed TITLE COUNT: so many programs of that step must have come to their end. Wine's programs also end with 0
# when its server is stopped under them.
expect_passed() {
    local log
    log=$(log_of "$1")
    [ "$(grep -c '^\[  PASSED  \]' "$log")" -eq "$2" ] || die "a program has not come to its end; see ${log#"$root"/}"
}

# Programs that between them use all of src/.
heap_programs=(core_tests trace_unit_tests trace_tests dll_tests run_tests trace_reader_tests fault_tests
    out_of_memory_tests)
# Dumps, millions of random texts, what allocates by the million, and hundreds of thousands of lines that are read back.
too_slow=-Crash*:*Dump*:Seeds/*:ManyThreads*:*ProcessExit*:AllMessages.*:BadInput.*
too_slow+=:WindowSearch.ReportsAnExplodingExpressionSoon

# Wine tells of a damaged block when it is freed, and of a free one that was written to.
run_heap_checked() {
    export WINEDEBUG=-all,err+heap
    timeout 7200 "$root/scripts/wine-run" "./$1.exe" --gtest_filter="$too_slow"
}

# In a prefix of its own, whose programs fill the tail of each block and all free ones, and check all of them at every
# turn: without the last (0x80) Wine fills and never looks. In Wine 10, as Wine 8 tells of damage that is none where
# several threads allocate.
soak_heap() {
    local key='HKLM\System\CurrentControlSet\Control\Session Manager'
    local program title
    for program in "${heap_programs[@]}" heap_overrun_host; do build_preset x64-release "$program"; done
    start_wine10 heap amd64 x64-release
    step "Turning Wine's heap checks on" wine reg add "$key" /v GlobalFlag /t REG_DWORD /d 0xf0 /f
    cd "$root/build/x64-release/bin"
    WINEDEBUG=-all,err+heap timeout 60 "$root/scripts/wine-run" ./heap_overrun_host.exe >"$logs/overrun.log" 2>&1 \
        </dev/null 9>&- || true
    grep -q 'err:heap:.*invalid block tail' "$logs/overrun.log" || die "a byte behind a block goes unnoticed"
    for program in "${heap_programs[@]}"; do
        title="Checking the heap in $program"
        step "$title" run_heap_checked "$program"
        expect_passed "$title" 1
        if grep 'err:heap' "$(log_of "$title")" >&2; then die "$program damages its heap"; fi
    done
    say "No program has damaged its heap."
}

soak_all() {
    local program
    for program in trace_tests tool_tests soak_tests out_of_memory_tests; do build_preset x64-release "$program"; done
    start_wine test null
    keep_desktop_up "$root/build/x64-release/bin/practice_target.exe"
    cd "$root/build/x64-release/bin"
    local commands="200,000 random commands" soak="Soaking (about ten minutes)"
    step "$commands" run_random_commands
    expect_passed "$commands" 1
    grep -E '^DIALWRIGHT_SOAK_SEED|commands in|^host: |^target |^trace: ' "$(log_of "$commands")" | tr -d '\r'
    step "$soak" run_soak
    expect_passed "$soak" 3
    grep -E '^[0-9]+ cycles: |OK \]|PASSED' "$(log_of "$soak")" | tr -d '\r'
}

command_soak() {
    local what=soak_all
    if [ "${1:-}" = --heap-checks ]; then
        what=soak_heap
        shift
    fi
    refuse_arguments "$@"
    ensure_tools "${test_tools[@]}"
    cd "$root"
    build_preset x64-release practice_target
    "$what"
}
