#!/bin/sh
# Builds and runs every test, windows included, without a display: first the program as people run it, then all
# that reads files once more under the address and undefined-behaviour sanitizers.
#
# Works on a fresh Debian 12: missing packages are installed, as root or through sudo.
set -eu
cd "$(dirname "$0")"
. tools/packages.sh

# shellcheck disable=SC2086
relvane_install $relvane_build_packages $relvane_test_packages

for preset in release sanitizers; do
    echo "== $preset: build"
    cmake --preset "$preset" >build-configure.log 2>&1 || { cat build-configure.log >&2; exit 1; }
    rm -f build-configure.log
    ninja -C "build/$preset" --quiet
    echo "== $preset: tests"
    ctest --preset "$preset" -j "$(nproc)"
done
