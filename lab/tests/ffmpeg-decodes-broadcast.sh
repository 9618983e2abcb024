#!/usr/bin/env bash
# The lab's broadcast as a real decoder sees it: lab-streams keeps a few seconds of every
# multiplex of the broadcast description, at the lab tuners' rate, and Debian's FFmpeg decodes
# each file. What "decodes with no error" means follows the channel's described fault:
#   clear, weak, damaged (transport error bit) and PAT-less channels: `ffmpeg -v error` prints
#       nothing; the first clear program's MPEG-2 video and its audio (AC-3 on atsc and cable,
#       MPEG-1 layer II on dvb-t and dtmb) decode, and every decoded picture shows the lab's
#       marks: consecutive frame numbers, the channel and the program (without a PAT FFmpeg
#       finds the streams by itself);
#   every program scrambled: FFmpeg finds nothing it can decode and says only that;
#   sync lost: FFmpeg finds no transport stream in the noise and says only that;
#   silent: the kept stream is empty;
#   a tune the tuner refuses: no stream can be kept, so none is checked.
# Usage: ffmpeg-decodes-broadcast.sh WINE-RUN PREFIX BINDIR LAB-STREAMS DESCRIPTION WORK-FOLDER
set -uo pipefail

if [ $# -ne 6 ]; then
    echo "usage: $0 WINE-RUN PREFIX BINDIR LAB-STREAMS DESCRIPTION WORK-FOLDER" >&2
    exit 2
fi
wine_run=$1 prefix=$2 bindir=$3 program=$4 description=$5 work=$6
for tool in ffmpeg ffprobe od awk; do
    command -v "$tool" >/dev/null || { echo "$tool is missing (scripts/setup.sh installs FFmpeg)" >&2; exit 1; }
done

seconds=3
rate=4000000 # the lab tuners' bitrate in lab/lab.conf
rm -rf "$work" && mkdir -p "$work" || exit 1
list=$("$wine_run" --prefix "$prefix" --bin "$bindir" -- "$program" "$description" "$work" $seconds $rate | tr -d '\r')
[ -n "$list" ] || { echo "lab-streams kept no stream" >&2; exit 1; }

failures=0
fail() {
    echo "FAILED $1: $2"
    failures=$((failures + 1))
}

# "codec,frames" of the first stream that fits the specifier.
decoded() {
    ffprobe -v error -count_frames -select_streams "$2" -show_entries stream=codec_name,nb_read_frames \
        -of csv=p=0 "$1" | sed -n '/./{s/,*$//;p;q}'
}

# One line a decoded picture: frame, channel and program read from its mark bands (16-pixel
# cells averaged by FFmpeg's area scaling; white first cell, black second, then the bits).
marks() {
    local width
    width=$(ffprobe -v error -select_streams "$2" -show_entries stream=width -of csv=p=0 "$1" | sed -n '/./{s/,*$//;p;q}')
    ffmpeg -nostdin -v error -i "$1" -map "0:$2" -fps_mode passthrough \
        -vf "crop=iw:48:0:0,scale=iw/16:3:flags=area,format=gray" -f rawvideo - |
        od -An -v -tu1 -w$((width / 16 * 3)) |
        awk -v cells=$((width / 16)) '{
            line = ""
            for (band = 0; band < 3; ++band) {
                base = band * cells
                if ($(base + 1) < 160 || $(base + 2) > 96) { line = line " -"; continue }
                n = 0
                for (c = 2; c < cells && c < 26; ++c)
                    if ($(base + c + 1) >= 128) n += 2 ^ (c - 2)
                line = line " " n
            }
            print substr(line, 2)
        }'
}

check_clear() {
    local file=$1 network=$2 channel=$3 number=$4 faults=$5 path=$work/$1 failed_before=$failures
    local errors video audio expected_audio video_streams audio_streams first last count
    errors=$(ffmpeg -nostdin -v error -i "$path" -f null - 2>&1)
    [ -z "$errors" ] || fail "$file" "FFmpeg reported: $(echo "$errors" | head -3)"
    # The program's streams; without a PAT FFmpeg knows no programs, only the streams it found.
    video_streams="p:$number:v" audio_streams="p:$number:a"
    case $faults in *no-pat*) video_streams="v:0" audio_streams="a:0" ;; esac
    case $network in atsc | cable) expected_audio=ac3 ;; *) expected_audio=mp2 ;; esac
    video=$(decoded "$path" "$video_streams")
    audio=$(decoded "$path" "$audio_streams")
    [ "${video%,*}" = mpeg2video ] && [ "${video#*,}" -ge $((seconds * 29 - 5)) ] ||
        fail "$file" "video decoded: '$video'"
    [ "${audio%,*}" = "$expected_audio" ] && [ "${audio#*,}" -ge $((seconds * 30)) ] ||
        fail "$file" "audio decoded: '$audio' (expected $expected_audio)"
    local pictures
    pictures=$(marks "$path" "$video_streams")
    count=$(echo "$pictures" | grep -c .)
    first=$(echo "$pictures" | head -1 | cut -d' ' -f1)
    last=$(echo "$pictures" | tail -1 | cut -d' ' -f1)
    echo "$pictures" | awk -v c="$channel" -v p="$number" -v first="$first" '
        $1 != first + NR - 1 || $2 != c || $3 != p { bad = 1; print "picture " NR ": " $0 }
        END { exit bad }' >"$work/$file.marks-wrong" ||
        fail "$file" "pictures whose marks are not frame n, channel $channel, program $number: $(head -3 "$work/$file.marks-wrong")"
    [ $failures -ne "$failed_before" ] ||
        echo "$file: no error; video $video, audio $audio; $count pictures marked frames $first-$last, channel $channel, program $number"
}

while read -r file network channel number faults; do
    path=$work/$file
    case $faults in
    *refuse*)
        echo "$file: the tuner refuses this tune, so no stream is kept"
        ;;
    *silence*)
        [ ! -s "$path" ] || fail "$file" "a silent channel's stream holds $(stat -c %s "$path") bytes"
        echo "$file: silent, the kept stream is empty"
        ;;
    *sync-loss*)
        errors=$(ffmpeg -nostdin -v error -i "$path" -f null - 2>&1)
        [ "$errors" = "$path: Invalid data found when processing input" ] ||
            fail "$file" "FFmpeg on noise reported: $(echo "$errors" | head -3)"
        echo "$file: sync lost, FFmpeg finds no transport stream in it"
        ;;
    *scrambled* | *)
        [ "$number" = 0 ] || { check_clear "$file" "$network" "$channel" "$number" "$faults"; continue; }
        errors=$(ffmpeg -nostdin -v error -i "$path" -f null - 2>&1)
        [ "$errors" = "Output file #0 does not contain any stream" ] ||
            fail "$file" "FFmpeg on a scrambled multiplex reported: $(echo "$errors" | head -3)"
        echo "$file: every program scrambled, FFmpeg finds nothing clear to decode"
        ;;
    esac
done <<<"$list"

if [ $failures -ne 0 ]; then
    echo "$failures channel(s) failed"
    exit 1
fi
echo "every channel decoded as described"
