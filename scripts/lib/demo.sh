# The demonstration: a script drives Wine's Notepad on a screen that nobody sees.
# shellcheck shell=bash

take_picture() {
    sleep 1 # Wine paints a moment after its windows changed; there is no sign of when
    DISPLAY=$DIALWRIGHT_DISPLAY import -window root "$out/$1.png"
}

# run_scripts NAME...: what dialwright says of each line goes to the log.
run_scripts() {
    say "== dialwright run ${*/#/examples/notepad/}"
    wine "$bin/dialwright.exe" run --work-folder build/demo/worker "${@/#/examples/notepad/}" \
        >>"$out/log.txt" 2>>"$out/sums.txt" </dev/null ||
        { tail -n 20 "$out/log.txt" "$out/sums.txt" >&2; die "the script failed; the log is in ${out#"$root"/}/log.txt"; }
}

expected_text() {
    printf '\357\273\277' # a byte-order mark, as Notepad writes
    sed -n 's/^Window\.SetText\.Path Notepad .* 1 "\(.*\)" 30000$/\1/p' examples/notepad/1-write.txt | tr -d '\n'
}

show_proof() {
    local file=$WINEPREFIX/drive_c/dialwright\ demo.txt tries=0
    until cmp -s "$file" <(expected_text); do
        [ $((tries += 1)) -le 100 ] || { cp "$file" "$out/typed.txt" 2>/dev/null || true
            die "no file that holds exactly the text; what there is lies in ${out#"$root"/}"; }
        sleep 0.1
    done
    cp "$file" "$out/typed.txt"
    printf 'What dialwright says of each line:\n\n'
    tr -d '\r' <"$out/log.txt"
    show_trace
    printf '\nThe file that Notepad saved holds exactly the text of the script:\n\n'
    sed '1s/^\xEF\xBB\xBF//' "$out/typed.txt"
    printf '\n\nPictures, the file and the log are in %s:\n' "${out#"$root"/}"
    ls "$out"
}

# The worker's trace, as the library left it beside it.
show_trace() {
    local trace
    trace=$(find "$out/worker" -name 'dialwright-host.exe_*_Dialwright_1.log')
    printf '\nThe end of the trace, with time, process, thread and level; the whole is in %s:\n\n' "${trace#"$root"/}"
    tr -d '\r' <"$trace" | tail -n 30
}

command_demo() {
    refuse_arguments "$@"
    ensure_tools "${demo_tools[@]}"
    cd "$root"
    build_preset x64-release dialwright dialwright_tool
    out=$root/build/demo
    bin=$root/build/x64-release/bin
    rm -rf "$out"
    mkdir -p "$out"
    start_screen
    start_wine demo desktop
    rm -f "$WINEPREFIX/drive_c/dialwright demo.txt"
    wine notepad >/dev/null 2>&1 </dev/null 9>&- &
    disown
    run_scripts 1-write.txt
    take_picture 1-typed
    run_scripts 2-close.txt 3-name.txt
    take_picture 2-save-as
    run_scripts 4-save.txt
    show_proof
}
