#!/usr/bin/env bash
# Installs the toolchain, Wine and the libraries the build needs (Debian 12), when missing.
set -euo pipefail

packages=(mingw-w64 wine wine64 cmake ninja-build libboost-dev googletest)
# The native fuzzers of the transport-stream code: clang with libFuzzer and the sanitizers.
packages+=(clang libclang-rt-14-dev)
missing=()
# Header-only libraries: JSON for the host and the tests, JPEG for the lab.
packages+=(nlohmann-json3-dev libstb-dev)
# One code style for the whole tree, checked by scripts/check-format.sh.
packages+=(clang-format)
# A real decoder for the lab's broadcast (LabBroadcastFfmpegTest).
packages+=(ffmpeg)
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "setup: installing ${missing[*]}"
    sudo_cmd=()
    [ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
    "${sudo_cmd[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
