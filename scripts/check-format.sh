#!/usr/bin/env bash
# Checks that every C and C++ file follows the tree's .clang-format; with --fix, rewrites them.
# compat/ stands in for ATL's own headers and keeps their layout.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files -- '*.cpp' '*.h' '*.c' ':!:compat/*')
if [ "${1:-}" = "--fix" ]; then
    clang-format -i "${files[@]}"
    exit 0
fi
if ! clang-format --dry-run --Werror "${files[@]}" 2>/tmp/format-check.$$; then
    head -40 /tmp/format-check.$$ >&2
    rm -f /tmp/format-check.$$
    echo "format: files differ from .clang-format; run scripts/check-format.sh --fix" >&2
    exit 1
fi
rm -f /tmp/format-check.$$
echo "format: ${#files[@]} files follow .clang-format"
