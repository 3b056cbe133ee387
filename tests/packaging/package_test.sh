#!/usr/bin/env bash
# package_test.sh PACKAGE: unpacks the package into a folder of its own and looks at it as a desktop and a student would.
# Its dependencies are compared with what the code imports, what the programs link and what they load when they run.
set -uo pipefail
package=$(realpath "$1")
cd "$(dirname "$0")/../.." || exit 1
source_tree=$PWD
id=com.tessary.Tessary
scratch=$(mktemp -d)
root=$scratch/root
home=$scratch/home
watcher='' window=''
failures=0

clean_up() {
    local process
    for process in $watcher $window; do kill -KILL "$process" 2>/dev/null; done
    rm -rf "$scratch"
}
trap clean_up EXIT

complain() {
    echo "FAILED: $*" >&2
    failures=$((failures + 1))
}

# must WHAT COMMAND...: the command ends with 0 and prints nothing but what is wrong.
must() {
    local what=$1 printed code=0
    shift
    printed=$("$@" 2>&1) || code=$?
    [ $code -eq 0 ] && return
    complain "$what (exit code $code)"
    echo "$printed" >&2
}

# same WHAT EXPECTED FOUND: lists of words, one on a line.
same() {
    local differences
    differences=$(diff <(grep . <<<"$2" | sort -u) <(grep . <<<"$3" | sort -u)) && return
    complain "$1 (< expected, > found)"
    grep '^[<>]' <<<"$differences" >&2
}

# Runs a program of the package as a student would: nothing of this shell's environment, and a home of its own.
packaged() {
    local name=$1
    shift
    env -i HOME="$home" PATH=/usr/bin:/bin XDG_RUNTIME_DIR="$scratch/runtime" QT_QPA_PLATFORM=offscreen \
        "$root/usr/bin/$name" --home "$home" "$@"
}

# ---- what the desktop reads ----

png_size() { od -A n -t u1 -j 16 -N 8 "$1" | awk '{ print $3 * 256 + $4 "x" $7 * 256 + $8 }'; }

check_metadata() {
    local share=$root/usr/share version size program
    version=$(dpkg-deb -f "$package" Version)
    must "The desktop entry is not valid" desktop-file-validate "$share/applications/$id.desktop"
    must "The metadata are not valid" appstreamcli validate --no-net "$share/metainfo/$id.metainfo.xml"
    grep -q "<launchable type=\"desktop-id\">$id.desktop<" "$share/metainfo/$id.metainfo.xml" ||
        complain "The metadata name another desktop entry"
    grep -q "setDesktopFileName(\"$id\")" src/desktop/main.cpp || complain "The window names another desktop entry"
    same "Versions differ" "$version" "$(
        sed -n 's/.*<release version="\([^"]*\)".*/\1/p' "$share/metainfo/$id.metainfo.xml" | head -n 1
        zcat "$share/doc/tessary/changelog.gz" | sed -n '1s/.*(\(.*\)).*/\1/p'
        packaged tessary --version | cut -d ' ' -f 2
        packaged tessary-cli --version | cut -d ' ' -f 2
    )"
    for program in $(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$share/applications/$id.desktop"); do
        [ -x "$root/usr/bin/$program" ] || complain "The desktop entry starts “$program”, which is not there"
    done
    grep -qx "Icon=$id" "$share/applications/$id.desktop" || complain "The desktop entry names another icon"
    [ -e "$share/icons/hicolor/scalable/apps/$id.svg" ] || complain "The icon's drawing is not there"
    for size in 16 24 32 48 64 128 256 512; do
        [ "$(png_size "$share/icons/hicolor/${size}x$size/apps/$id.png")" = "${size}x$size" ] ||
            complain "The icon of $size pixels is not that size"
    done
    [ "$(dpkg-deb -c "$package" | awk '{ print $2 }' | sort -u)" = root/root ] || complain "A file is not root's"
}

# Every option and command that a program's help lists.
commands_of_help() { packaged "$1" --help | grep -oE '^  [a-z]+' | tr -d ' '; }
options_of_help() { packaged "$1" --help | grep -oE '^  (-., ?)?--[a-z-]+' | grep -oE -- '--[a-z-]+'; }

check_manual() {
    local program page word
    for program in "$root"/usr/bin/*; do
        program=$(basename "$program")
        page=$(LC_ALL=C.UTF-8 MANWIDTH=100 man --warnings -l "$root/usr/share/man/man1/$program.1.gz" 2>"$scratch/man")
        [ -s "$scratch/man" ] && complain "The manual page of $program is not clean: $(cat "$scratch/man")"
        for word in $(options_of_help "$program") $(commands_of_help "$program"); do
            grep -qw -e "$word" <<<"$page" || complain "The manual page of $program does not know $word"
        done
    done
}

check_programs() {
    local program
    for program in "$root"/usr/bin/*; do
        [ -z "$(nm "$program" 2>/dev/null)" ] || complain "$program has symbols"
        readelf -d "$program" | grep -qE 'RPATH|RUNPATH' && complain "$program looks for libraries in folders of its own"
    done
    must "A path of this machine is in the package" bash -c '! grep -rlaF -e "$1" "$2"' - "$source_tree" "$root"
}

# ---- a start and an end ----

# Starts the window, and ends it with SIGTERM as soon as it writes to the library. It takes no notice before its event
# loop runs, and then saves; so it ends with 0 only when the window could be made. $scratch/loaded.* tells what it loaded.
check_window() {
    local line code=0
    packaged tessary-cli pages add --title Cells >/dev/null || complain "The terminal's program can't add a page"
    packaged tessary-cli settings set autoBackup on >/dev/null
    [ ! -e "$home/Documents" ] || complain "There is a backup already"
    exec 3< <(exec inotifywait -m -r -e create "$home/Notara" 2>&1)
    watcher=$!
    until [[ ${line:-} == *established* ]]; do read -r -t 30 line <&3 || break; done
    env -i HOME="$home" PATH=/usr/bin:/bin XDG_RUNTIME_DIR="$scratch/runtime" QT_QPA_PLATFORM=offscreen \
        LD_DEBUG=libs LD_DEBUG_OUTPUT="$scratch/loaded" "$root/usr/bin/tessary" --home "$home" 2>"$scratch/said" &
    window=$!
    read -r -t 30 line <&3 || complain "The window's program did not open its library"
    kill -TERM "$window"
    wait "$window" || code=$?
    kill "$watcher"
    exec 3<&-
    [ $code -eq 0 ] || complain "The window's program ended with $code: $(cat "$scratch/said")"
    grep -q 'qrc:' "$scratch/said" && complain "QML complains: $(cat "$scratch/said")"
    [ -n "$(ls "$home/Documents/Tessary Backups" 2>/dev/null)" ] || complain "SIGTERM did not close the library: no backup"
    packaged tessary-cli pages list | grep -q Cells || complain "The page is lost"
    must "The library is not in order" packaged tessary-cli verify
}

# ---- dependencies ----

# The packages of files; a file may be recorded with or without the /usr at its beginning.
owners() {
    local path recorded
    sed 's,^/usr/,/,' | sort -u >"$scratch/paths"
    recorded=$(sed 'p; s,^,/usr,' "$scratch/paths" | xargs dpkg -S 2>/dev/null)
    while read -r path; do
        grep -E -m 1 ": (/usr)?${path//+/\\+}\$" <<<"$recorded" || echo "nobody's ($path)"
    done <"$scratch/paths" | cut -d : -f 1 | sort -u
}

# The folders of the QML modules that some folders of QML files import.
imported() {
    local folder arguments=()
    for folder in "$@"; do arguments+=(-rootPath "$folder"); done
    "$(qtpaths6 --query QT_HOST_LIBEXECS)/qmlimportscanner" "${arguments[@]}" -importPath "$qml" |
        sed -n 's/^ *"path": "\(.*\)",\{0,1\}$/\1/p' | sort -u
}

# The packages of the QML modules that the window imports, those that they import in turn, and so on.
qml_packages() {
    local before='' modules
    modules=$(imported src/desktop)
    until [ "$modules" = "$before" ]; do
        before=$modules
        mapfile -t folders <<<"$modules"
        modules=$(imported src/desktop "${folders[@]}" | while read -r module; do
            [ ! -e "$module/qmldir" ] || echo "$module"
        done)
    done
    sed 's,$,/qmldir,' <<<"$modules" | owners
}

linked_packages() {
    readelf -d "$root"/usr/bin/* | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | sort -u | while read -r library; do
        ldconfig -p | awk -v name="$library" '$1 == name { print $NF; exit }'
    done | owners
}

check_dependencies() {
    local qml depends reached loaded
    qml=$(qtpaths6 --query QT_INSTALL_QML)
    depends=$(dpkg-deb -f "$package" Depends | tr ',' '\n' | sed 's/^ *//; s/ .*//' | sort -u)
    # No import and no link shows the font that the theme names, nor the tables with which poppler reads PDFs.
    same "What the package depends on" "$(printf '%s\n' "$(linked_packages)" "$(qml_packages)" fonts-inter poppler-data)" \
        "$depends"
    # shellcheck disable=SC2086
    reached=$(apt-cache depends --recurse --installed --no-recommends --no-suggests --no-conflicts --no-breaks \
        --no-replaces --no-enhances $depends | sed -n 's/^\([a-z0-9][^: ]*\).*/\1/p' | sort -u)
    loaded=$(cat "$scratch"/loaded.* | sed -n 's/.*calling init: //p' | sort -u | owners)
    [ -n "$loaded" ] || complain "It was not seen what the window's program loads"
    same "The window's program loads what the package does not depend on" "" "$(comm -23 <(echo "$loaded") <(echo "$reached"))"
}

mkdir -m 700 "$root" "$home" "$scratch/runtime"
dpkg-deb -x "$package" "$root" || exit 1
check_metadata
check_manual
check_programs
check_window
check_dependencies
[ $failures -eq 0 ] && echo "$(basename "$package") is in order."
