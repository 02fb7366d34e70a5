#!/bin/sh
# Each header can be included once only and begins by saying what it is for; no include goes around the layers by
# way of a parent folder.
set -eu
failed=0
for header in $(find app samples src tests -name '*.h' | sort); do
    [ "$(grep -c '^#pragma once$' "$header")" = 1 ] || { echo "$header: no #pragma once"; failed=1; }
    head -n 1 "$header" | grep -q '^// ' || { echo "$header: does not begin by saying what it is for"; failed=1; }
done
if grep -rnE '#include "(\.\./|src/)' --include='*.cpp' --include='*.h' app bench samples src tests; then
    echo "an include goes around the layers"
    failed=1
fi
exit $failed
