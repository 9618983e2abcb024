#!/usr/bin/env bash
# Makes sure the build tree's Wine prefix exists and is configured; rebuilds a broken one.
# Usage: wine-prefix.sh PREFIX BINDIR
set -euo pipefail

prefix=$1
bindir=$2
source_dir=$(cd "$(dirname "$0")/.." && pwd)
layout_version=1

export WINEPREFIX=$prefix
export WINEDEBUG=-all
export WINEARCH=win64
# No Mono or Gecko install prompts.
export WINEDLLOVERRIDES="mscoree=;mshtml="

mkdir -p "$(dirname "$prefix")"
exec 9>"$prefix.lock"
flock 9

stamp=$prefix/.sorvane-prefix
if [ ! -f "$stamp" ] || [ "$(cat "$stamp")" != "$layout_version" ] || [ ! -f "$prefix/system.reg" ]; then
    if [ -d "$prefix" ]; then
        echo "wine-prefix: rebuilding $prefix" >&2
        wineserver -k 2>/dev/null || true
        rm -rf "$prefix"
    else
        echo "wine-prefix: creating $prefix" >&2
    fi
    wineboot -i >/dev/null 2>&1 || true
    wineserver -w
    settings=$(mktemp --suffix=.reg)
    cat >"$settings" <<'REG'
REGEDIT4

[HKEY_CURRENT_USER\Software\Wine]
"Version"="win10"

[HKEY_CURRENT_USER\Software\Wine\Drivers]
"Graphics"="null"
"Audio"=""

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\AeDebug]
"Debugger"=""
"Auto"="0"
REG
    wine regedit /S "$(winepath -w "$settings")" >/dev/null 2>&1
    wineserver -w
    rm -f "$settings"
    if ! grep -q '"Graphics"="null"' "$prefix/user.reg"; then
        echo "wine-prefix: prefix settings did not take" >&2
        exit 1
    fi
    echo "$layout_version" >"$stamp"
fi

# The lab registers its simulated hardware; it keeps its own stamp.
if [ -x "$source_dir/lab/setup-prefix.sh" ]; then
    "$source_dir/lab/setup-prefix.sh" "$prefix" "$bindir"
fi
