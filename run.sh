#!/usr/bin/env bash
# Installs what is missing, builds tavview and the graph module, and runs tavview:
# on its built-in take, or on the file and options given. Without a display it
# renders one picture headless, on a private virtual display, and says where it is.
#   ./run.sh                               the built-in take
#   ./run.sh ../shared/data/c3d/gait-raw.c3d --select 0-3
# TAV_BUILD_DIR chooses the build folder (default build), TAV_SNAPSHOT the picture.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/deps.sh
tav_install "${TAV_BUILD_PACKAGES[@]}" "${TAV_RUN_PACKAGES[@]}"

build=${TAV_BUILD_DIR:-build}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" --target tavview tavgraph -j"$(nproc)"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$build/bin/tavview" "$@"
fi
picture=${TAV_SNAPSHOT:-$PWD/$build/tavview.png}
tav_with_display "$build/bin/tavview" --snapshot "$picture" "$@"
echo "There is no display here, so tavview drew one picture instead: $picture"
