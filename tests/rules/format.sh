#!/bin/sh
# All C++ files are formatted as .clang-format says.
set -eu
find app bench resources samples src tests -name '*.cpp' -o -name '*.h' | sort |
    xargs clang-format-14 --dry-run -Werror
