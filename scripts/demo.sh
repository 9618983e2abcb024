#!/usr/bin/env bash
# Sets up a fresh machine, builds, and runs the library against the lab's simulated hardware.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
./scripts/build.sh
build_dir=${BUILD_DIR:-$PWD/build}
run=(cmake/wine-run.sh --prefix "$build_dir/wineprefix" --bin "$build_dir/bin" --)
if [ -f "$build_dir/bin/sorvane-diag.exe" ]; then
    "${run[@]}" "$build_dir/bin/sorvane-diag.exe" demo
else
    # Until the console host lands: the module-frame tests are the smallest real job.
    "${run[@]}" "$build_dir/bin/ModuleRegistrationTest.exe"
fi
