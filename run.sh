#!/bin/sh
# Builds the program and makes the whole folder of one Access database (PDF, comma-separated files, text files, a
# workbook, pictures of its forms), or opens the window.
#
#   ./run.sh [TARGET]       documents TARGET (default: the sample made by the build) into out/
#   ./run.sh --window       opens the desktop program
#
# Works on a fresh Debian 12: missing packages are installed, as root or through sudo.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
. "$here/tools/packages.sh"

usage() { sed -n '2,8s/^# \{0,1\}//p' "$here/run.sh"; }
case "${1:-}" in
    -h | --help) usage; exit 0 ;;
esac
if [ $# -gt 1 ]; then
    usage >&2
    exit 2
fi

# The target's path is the caller's; everything else lies in the project.
case "${1:-}" in
    "" | --window) target=$here/build/release/samples/juchu.mdb ;;
    *) target=$(realpath -- "$1") ;;
esac
cd "$here"

# shellcheck disable=SC2086
relvane_install $relvane_build_packages
echo "Building (a few minutes the first time) ..."
cmake --preset release >build-configure.log 2>&1 || { cat build-configure.log >&2; exit 1; }
rm -f build-configure.log
ninja -C build/release --quiet programs

if [ "${1:-}" = --window ]; then
    exec build/release/bin/relvane
fi
set -- "$target" --formats pdf,csv,text,xls --images --out out
case $target in
    # Some links of the sample lead nowhere, as those of many an old database do.
    "$here"/build/*) set -- "$@" --without-links ;;
esac
build/release/bin/relvane-cli document "$@"
echo "The folder is in $here/out:"
ls out
