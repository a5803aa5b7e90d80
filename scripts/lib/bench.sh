# The benchmark table: the release build against a peer and against the bare calls of the platform.
# shellcheck shell=bash

bench_tools=(/usr/lib/wine/wine64:wine64 /usr/include/spdlog/spdlog.h:libspdlog-dev /usr/include/fmt/format.h:libfmt-dev
    /usr/lib/python3/dist-packages/matplotlib/__init__.py:python3-matplotlib)

refuse_bench_arguments() {
    while [ $# -gt 0 ]; do
        case $1 in
            --quick | --json | --growth) shift ;;
            --runs)
                [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || { say "dev: --runs takes a number above zero"; exit 2; }
                shift 2
                ;;
            *) refuse_arguments "$@" ;;
        esac
    done
}

command_bench() {
    refuse_bench_arguments "$@"
    ensure_tools "${bench_tools[@]}"
    cd "$root"
    build_preset x64-release dialwright practice_target
    # A folder that was configured before the peer's headers came has no benchmarks yet.
    [ -d build/x64-release/bench/peer ] || step "Configuring the benchmarks" cmake build/x64-release
    build_preset x64-release bench
    start_wine test null
    keep_desktop_up "$root/build/x64-release/bin/practice_target.exe"
    say "== Measuring"
    python3 scripts/bench.py "$@" 9>&-
}
