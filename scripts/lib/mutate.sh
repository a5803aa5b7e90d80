# Faults on purpose: does every one of them turn a test red?
# shellcheck shell=bash

run_mutate() { python3 "$root/scripts/mutate" --root "$root" --work "$cache/mutate" "$@"; }

command_mutate() {
    case " $* " in
        *" --help "* | *" -h "* | *" --check "*)
            run_mutate "$@"
            return
            ;;
    esac
    ensure_tools "${test_tools[@]}"
    mkdir -p "$cache/mutate"
    # Objects with a fault in them are asked for once; they are not to push out those of other builds.
    export CCACHE_READONLY=1 CCACHE_BASEDIR=$cache/mutate/tree
    start_wine mutate null
    run_mutate "$@" 9>&-
}
