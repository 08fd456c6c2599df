#!/usr/bin/env bash
# Makes the README's pictures: each window alone, as a player first sees it, in docs/.
# Needs what tools/screenshot.sh needs.
set -euo pipefail
cd "$(dirname "$0")/.."
mkdir -p docs
for state in main tips blocks blocks-symbols about; do
    WINDOW_ONLY=1 tools/screenshot.sh "docs/$state.png" "$state" >/dev/null
done
ls -l docs/*.png
