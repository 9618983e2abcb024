#!/usr/bin/env bash
# Sets up a fresh machine, builds, and runs every test under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
./scripts/check-format.sh
./scripts/build.sh
build_dir=${BUILD_DIR:-$PWD/build}
ctest --test-dir "$build_dir" --output-on-failure -j2 --timeout 600
./scripts/fuzz.sh --smoke
