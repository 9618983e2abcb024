#!/usr/bin/env bash
# Sets up a fresh machine, builds, and runs the console host against the lab's simulated
# hardware: lists the capture devices, then captures frames from the lab webcam into a folder.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
./scripts/build.sh
build_dir=${BUILD_DIR:-$PWD/build}
exec cmake/wine-run.sh --prefix "$build_dir/wineprefix" --bin "$build_dir/bin" -- "$build_dir/bin/sorvane-diag.exe" demo
