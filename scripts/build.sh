#!/usr/bin/env bash
# Configures and builds everything into BUILD_DIR (default: build/ in the checkout).
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${BUILD_DIR:-$PWD/build}
cmake -S . -B "$build_dir" -G Ninja >/dev/null
ninja -C "$build_dir" -j"$(nproc)"
