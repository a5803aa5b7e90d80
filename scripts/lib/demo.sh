# The demonstration: a script drives Wine's Notepad on a screen that nobody sees.
# shellcheck shell=bash

# The display's number comes from the server itself, so that two demonstrations never meet.
start_screen() {
    local number
    exec 8< <(exec Xvfb -displayfd 1 -screen 0 1024x768x24 -nolisten tcp 2>/dev/null 9>&-)
    screen_pid=$!
    trap stop_wine EXIT
    read -r -t 30 number <&8 || die "the virtual screen does not start"
    export DIALWRIGHT_DISPLAY=:$number
}

take_picture() {
    sleep 1 # Wine paints a moment after its windows changed; there is no sign of when
    DISPLAY=$DIALWRIGHT_DISPLAY import -window root "$out/$1.png"
}

run_script() {
    say "== Running examples/notepad/$1.txt"
    wine "$bin/run_script.exe" "examples/notepad/$1.txt" >>"$out/log.txt" 2>&1 </dev/null ||
        { tail -n 20 "$out/log.txt" >&2; die "the script failed; the log is in ${out#"$root"/}/log.txt"; }
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
    printf 'The log:\n\n'
    tr -d '\r' <"$out/log.txt"
    show_trace
    printf '\nThe file that Notepad saved holds exactly the text of the script:\n\n'
    sed '1s/^\xEF\xBB\xBF//' "$out/typed.txt"
    printf '\n\nPictures, the file and the log are in %s:\n' "${out#"$root"/}"
    ls "$out"
}

# The host's trace, as the library left it beside the host.
show_trace() {
    local trace
    trace=$(find "$bin/logs/trace" -name 'run_script.exe_*_Dialwright_1.log')
    printf '\nThe trace, with time, process, thread and level, is in %s:\n\n' "${trace#"$root"/}"
    tr -d '\r' <"$trace"
    cp "$trace" "$out/trace.log"
}

command_demo() {
    refuse_arguments "$@"
    ensure_tools "${demo_tools[@]}"
    cd "$root"
    build_preset x64-release dialwright run_script
    out=$root/build/demo
    bin=$root/build/x64-release/bin
    rm -rf "$out" "$bin"/logs/trace/run_script.exe_*
    mkdir -p "$out"
    start_screen
    start_wine demo desktop
    rm -f "$WINEPREFIX/drive_c/dialwright demo.txt"
    wine notepad >/dev/null 2>&1 </dev/null 9>&- &
    disown
    run_script 1-write
    take_picture 1-typed
    run_script 2-close
    run_script 3-name
    take_picture 2-save-as
    run_script 4-save
    show_proof
}
