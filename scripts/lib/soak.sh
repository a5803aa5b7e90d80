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
        timeout 600 "$root/scripts/wine-run" ./tool_tests.exe --gtest_filter="$tool_soak_tests"
}

command_soak() {
    refuse_arguments "$@"
    ensure_tools "${test_tools[@]}"
    cd "$root"
    build_preset x64-release trace_tests
    build_preset x64-release tool_tests
    build_preset x64-release soak_tests
    build_preset x64-release practice_target
    start_wine test null
    keep_desktop_up "$root/build/x64-release/bin/practice_target.exe"
    cd "$root/build/x64-release/bin"
    step "200,000 random commands" run_random_commands
    grep -E '^DIALWRIGHT_SOAK_SEED|commands in|^host: |^target |^trace: ' "$logs/200-000-random-commands.log" | tr -d '\r'
    step "Soaking (about ten minutes)" run_soak
    grep -E '^[0-9]+ cycles: |OK \]|PASSED' "$logs/Soaking--about-ten-minutes-.log" | tr -d '\r'
}
