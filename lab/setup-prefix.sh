#!/usr/bin/env bash
# Writes the lab into a Wine prefix: the COM classes of sorvanelab.dll (InprocServer32 in
# BINDIR, the decoders' filter data) and one moniker per device of lab/lab.conf.
# Usage: setup-prefix.sh PREFIX BINDIR
# Called by cmake/wine-prefix.sh with the prefix lock held. Idempotent: it runs the setup tool
# again only when the description, the DLL, the tool or BINDIR changed.
set -euo pipefail

prefix=$1
bindir=$2
lab_dir=$(cd "$(dirname "$0")" && pwd)
description=$lab_dir/lab.conf
tool=$bindir/lab-setup.exe
dll=$bindir/sorvanelab.dll

# A tree that has not built the lab has nothing to register.
if [ ! -f "$tool" ] || [ ! -f "$dll" ]; then
    exit 0
fi

stamp=$prefix/.sorvane-lab
fingerprint=$({ echo "$bindir"; sha1sum "$description" "$tool" "$dll" | cut -d' ' -f1; } | sha1sum | cut -d' ' -f1)
if [ -f "$stamp" ] && [ "$(cat "$stamp")" = "$fingerprint" ]; then
    exit 0
fi

export WINEPREFIX=$prefix
export WINEDEBUG=-all
export WINEARCH=win64
export WINEDLLOVERRIDES="mscoree=;mshtml="

log=$(mktemp)
if ! wine "$tool" "$(winepath -w "$description")" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    echo "lab: setting up the lab in $prefix failed" >&2
    exit 1
fi
rm -f "$log"
wineserver -w
echo "$fingerprint" >"$stamp"
