# The project's own Wine prefix. The user's prefix is never touched.
# shellcheck shell=bash

wine() { "$root/scripts/wine-run" "$@"; }

# make_prefix null: no display at all, for tests. make_prefix desktop: a desktop of its own on an X screen, for pictures.
# Wine chooses when its server starts, so the server ends once.
make_prefix() {
    local explorer='HKCU\Software\Wine\Explorer'
    rm -rf "$WINEPREFIX"
    wine wineboot -i
    if [ "$1" = null ]; then
        wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
    else
        wine reg add "$explorer" /v Desktop /d Default /f
        wine reg add "$explorer\\Desktops" /v Default /d 1024x768 /f
    fi
    wine reg delete 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /f || true
    wineserver_of_prefix -w
    touch "$WINEPREFIX/complete"
}

wineserver_of_prefix() { "$root/scripts/wine-run" --server "$@"; }

# start_wine NAME SCREEN: makes the prefix if need be and keeps its server running until this script ends. Nothing that
# lives on may hold descriptor 9, the lock of the cache. The first program starts Wine's services, which would hold a
# pipe open: its output goes nowhere.
start_wine() {
    # A prefix made by other rules than these, or by another Wine, is another prefix.
    WINEPREFIX=$cache/wine-$1-$({ declare -f make_prefix; printf %s "${DIALWRIGHT_WINE:-}"; } | sha256sum | cut -c1-8)
    export WINEPREFIX
    export DIALWRIGHT_WINEPREFIX=$WINEPREFIX
    [ -e "$WINEPREFIX/complete" ] || step "Making the Wine prefix" make_prefix "$2"
    wineserver_of_prefix -k >/dev/null 2>&1 || true
    trap stop_wine EXIT
    wineserver_of_prefix -p >/dev/null 2>&1 9>&- || die "Wine's server does not start in $WINEPREFIX"
    wine wineboot >/dev/null 2>&1 </dev/null 9>&- || die "Wine does not start in $WINEPREFIX"
}

# The display's number comes from the server itself, so that two runs never meet.
start_screen() {
    local number
    exec 8< <(exec Xvfb -displayfd 1 -screen 0 1024x768x24 -nolisten tcp 2>/dev/null 9>&-)
    screen_pid=$!
    trap stop_wine EXIT
    read -r -t 30 number <&8 || die "the virtual screen does not start"
    export DIALWRIGHT_DISPLAY=:$number
}

stop_wine() {
    [ -z "${DIALWRIGHT_WINEPREFIX:-}" ] || wineserver_of_prefix -k >/dev/null 2>&1 || true
    [ -z "${screen_pid:-}" ] || kill "$screen_pid" 2>/dev/null || true
}

# keep_desktop_up PROGRAM: a desktop ends with its last window, and the next program starts it anew: its process would
# inherit that program's pipes, and whoever reads them would wait for ever. One window that stays keeps it up.
keep_desktop_up() {
    local said=$logs/desktop.log tries=0
    wine "$1" --hidden --title "Keeps the desktop up" >"$said" 2>&1 </dev/null 9>&- &
    disown
    until grep -q '^ready' "$said"; do
        [ $((tries += 1)) -le 300 ] || die "no window comes up under Wine; see ${said#"$root"/}"
        sleep 0.1
    done
}
