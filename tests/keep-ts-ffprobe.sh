#!/usr/bin/env bash
# `sorvane-diag clearqam`, `dvbt`, `atsc` and `ocur` with `--keep-ts` on the lab, then Debian's
# ffprobe reads each kept stream: its PAT must list the program the lab broadcasts on that
# channel, and that program's PMT its video and audio streams. (The ATSC and OpenCable streams
# come from the host's own capture after the scan, their scan graphs having no sample grabber.)
# Usage: keep-ts-ffprobe.sh WINE-RUN PREFIX BINDIR
set -uo pipefail
run=$1
prefix=$2
bindir=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

if ! command -v ffprobe >/dev/null; then
    echo "ffprobe is missing (apt-get install ffmpeg)" >&2
    exit 1
fi

failures=0
# check NAME PROGRAM STREAMS -- host arguments
check() {
    local name=$1 program=$2 streams=$3
    shift 4
    local file="$work/$name.ts"
    "$run" --prefix "$prefix" --bin "$bindir" -- "$bindir/sorvane-diag.exe" "$@" --keep-ts "$(winepath -w "$file")" \
        >"$work/$name.out" 2>&1
    local status=$?
    if [ $status -ne 0 ] || [ ! -s "$file" ]; then
        echo "FAILED $name: exit status $status, file $(stat -c %s "$file" 2>/dev/null || echo missing)"
        cat "$work/$name.out"
        failures=$((failures + 1))
        return
    fi
    local programs
    # The elementary streams' decoding is not judged here: only the tables.
    programs=$(ffprobe -v error -show_entries program=program_id,nb_streams -of csv=p=0 "$file" 2>/dev/null |
        grep -v '^$')
    if ! grep -qE "^$program,$streams(,|\$)" <<<"$programs"; then
        echo "FAILED $name: ffprobe found programs [$programs], expected $program with $streams streams"
        failures=$((failures + 1))
        return
    fi
    echo "ok $name: program $program with $streams streams"
}

check clearqam 1 2 -- clearqam -d "Lab ATSC QAM Tuner" --set DigitalStartChannel=2 --set DigitalEndChannel=2
check dvbt 4097 2 -- dvbt -d "Lab DVB-T Tuner" --set Country=DE --set DigitalStartChannel=9 --set DigitalEndChannel=9
check cable120 7 2 -- clearqam -d "Lab ATSC QAM Tuner" --set DigitalStartChannel=120 --set DigitalEndChannel=120
check atsc 3 2 -- atsc -d "Lab ATSC QAM Tuner" --set DigitalStartChannel=8 --set DigitalEndChannel=8
check ocur 1 2 -- ocur -d "Lab OpenCable Tuner" --set DigitalStartChannel=2 --set DigitalEndChannel=2

[ $failures -eq 0 ] && echo "keep-ts-ffprobe: all streams read" || exit 1
