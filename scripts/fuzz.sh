#!/usr/bin/env bash
# Builds the fuzzers natively (clang, libFuzzer, AddressSanitizer) and runs them: transport stream,
# device identity, parameter values.
#   scripts/fuzz.sh --smoke                 every target for a few seconds (part of scripts/test.sh)
#   scripts/fuzz.sh --runs N [TARGET...]    every target (or the ones named) for N executions
#   scripts/fuzz.sh --time S [TARGET...]    every target (or the ones named) for S seconds
# Seeds: generated streams and, when present, the lab's broadcast (lab/broadcast.conf) as its generator
# emits it. Corpora grow in $FUZZ_DIR/corpus/<target> (default build-fuzz/); crashes land in $FUZZ_DIR/crashes.
set -euo pipefail
cd "$(dirname "$0")/.."

fuzz_dir=${FUZZ_DIR:-$PWD/build-fuzz}
library=modules/src/multi/common/libSorvane/windows
targets=(quality packetsearch programsearch streamhealth deviceids parameters)
declare -A sources=(
    [quality]="fuzz/QualityFuzzer.cpp $library/HexDump.cpp"
    [packetsearch]="fuzz/PacketSearchFuzzer.cpp $library/TsPacketSearch.cpp"
    [programsearch]="fuzz/ProgramSearchFuzzer.cpp $library/ClearProgramSearch.cpp $library/PsiSectionAssembler.cpp $library/Crc32Mpeg2.cpp"
    [streamhealth]="fuzz/StreamHealthFuzzer.cpp $library/StreamHealthMonitor.cpp $library/PsiSectionAssembler.cpp $library/Crc32Mpeg2.cpp"
    # The identity parsers of device discovery, with the framework's text class; fuzz/native
    # stands in for the two UTF-8 conversions of <windows.h> it uses.
    [deviceids]="fuzz/DeviceIdFuzzer.cpp fuzz/native/KelAssertAbort.cpp $library/DeviceIdParser.cpp $library/CaptureBusType.cpp framework/src/kelcore/String.cpp"
    # The framework's reading of parameter values, of every declared type.
    [parameters]="fuzz/ParameterFuzzer.cpp fuzz/native/KelAssertAbort.cpp framework/src/ruvo/Value.cpp framework/src/ruvo/RuvoString.cpp framework/src/kelcore/String.cpp"
)
cxx=${CXX_FUZZ:-clang++}
flags=(-std=c++17 -O1 -g -fno-omit-frame-pointer -I"$library" -Itests/support -Iframework/include -Ifuzz/native
       "-D__declspec(x)=")

mode=${1:-}
case "$mode" in
    --smoke) limit=(-max_total_time=8) ;;
    --runs) limit=(-runs="${2:?--runs needs a count}"); shift ;;
    --time) limit=(-max_total_time="${2:?--time needs seconds}"); shift ;;
    *) sed -n '2,6p' "$0"; exit 2 ;;
esac
shift
[ $# -gt 0 ] && targets=("$@")

mkdir -p "$fuzz_dir/bin" "$fuzz_dir/crashes"
build() {
    local output=$1
    shift
    # Rebuilt only when a source is newer than the program.
    local stale=0
    [ -x "$output" ] || stale=1
    for source in "$@"; do [ "$source" -nt "$output" ] && stale=1; done
    for header in "$library"/*.h fuzz/*.h framework/include/*/*.h; do [ "$header" -nt "$output" ] && stale=1; done
    [ $stale -eq 0 ] || "$cxx" "${flags[@]}" "${extra[@]}" "$@" -o "$output"
}

extra=()
build "$fuzz_dir/bin/seeds" fuzz/SeedGenerator.cpp tests/support/TsStreamBuilder.cpp "$library/Crc32Mpeg2.cpp"
for target in "${targets[@]}"; do
    mkdir -p "$fuzz_dir/corpus/$target" "$fuzz_dir/seeds/$target"
done
mkdir -p "$fuzz_dir/seeds/quality" "$fuzz_dir/seeds/packetsearch" "$fuzz_dir/seeds/programsearch" "$fuzz_dir/seeds/streamhealth"
"$fuzz_dir/bin/seeds" "$fuzz_dir/seeds"
# Parameter values as a person types them, as UTF-16 text.
mkdir -p "$fuzz_dir/seeds/parameters"
n=0
for text in 0 5 010 4294967295 4294967296 -3 0x3 88.1 -2.5 1e2 1e999 nan inf true False yes maybe " 7 " ANTENNA; do
    n=$((n + 1))
    printf '%s' "$text" | iconv -f UTF-8 -t UTF-16LE >"$fuzz_dir/seeds/parameters/typed-$n"
done
# The device paths of the lab's hardware, as UTF-16 text, seed the identity parsers.
mkdir -p "$fuzz_dir/seeds/deviceids"
n=0
grep -E '^(path|instance) = ' lab/lab.conf | cut -d' ' -f3- | while IFS= read -r text; do
    n=$((n + 1))
    printf '%s' "$text" | iconv -f UTF-8 -t UTF-16LE >"$fuzz_dir/seeds/deviceids/lab-$n"
done
# The lab's broadcast, as its generator emits it, when the lab's portable broadcast code is here.
if [ -f lab/broadcast/TransportStreamGenerator.cpp ]; then
    extra=(-Ilab -Ilab/include)
    build "$fuzz_dir/bin/labseeds" fuzz/LabSeedGenerator.cpp lab/broadcast/*.cpp
    "$fuzz_dir/bin/labseeds" lab/broadcast.conf "$fuzz_dir/seeds"
fi

extra=(-fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined)
for target in "${targets[@]}"; do
    [ -n "${sources[$target]:-}" ] || { echo "fuzz: no target $target (have: ${!sources[*]})" >&2; exit 2; }
    # shellcheck disable=SC2086
    build "$fuzz_dir/bin/$target" ${sources[$target]}
done

for target in "${targets[@]}"; do
    echo "fuzz: $target ${limit[*]}"
    log="$fuzz_dir/$target.log"
    if ! "$fuzz_dir/bin/$target" "${limit[@]}" -artifact_prefix="$fuzz_dir/crashes/$target-" \
        -print_final_stats=1 "$fuzz_dir/corpus/$target" "$fuzz_dir/seeds/$target" >"$log" 2>&1; then
        tail -40 "$log"
        echo "fuzz: $target FAILED (log: $log)" >&2
        exit 1
    fi
    grep -E "stat::number_of_executed_units|Done [0-9]+ runs" "$log" | tail -2 | sed "s/^/fuzz: $target: /"
done
