#!/usr/bin/env bash
# The real game on an X server of its own, with a D-Bus session and the
# AT-SPI bus, played the way a screen reader sees it (screen_reader.py).
# Usage: screen_reader.sh GAME. Exit 77, skipped, when something it needs
# is not there.
set -euo pipefail
game=$1
here=$(cd "$(dirname "$0")" && pwd)
# Debian's own Python, where python3-pyatspi lives, whatever else is first on the PATH.
python=/usr/bin/python3

skip() {
  echo "SKIPPED: $*"
  exit 77
}
command -v Xvfb >/dev/null || skip "no Xvfb (package xvfb)"
command -v dbus-run-session >/dev/null || skip "no dbus-run-session (package dbus)"
[ -x /usr/libexec/at-spi-bus-launcher ] || skip "no AT-SPI bus (package at-spi2-core)"
"$python" -c 'import pyatspi' 2>/dev/null || skip "no pyatspi (package python3-pyatspi)"

# A display number the X server picks itself, so that runs side by side
# never meet.
work=$(mktemp -d)
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$work/display" 2>"$work/xvfb.log" &
xvfb=$!
trap 'kill $xvfb 2>/dev/null; rm -rf "$work"' EXIT
for _ in $(seq 100); do
  [ -s "$work/display" ] && break
  kill -0 "$xvfb" 2>/dev/null || skip "Xvfb did not start: $(cat "$work/xvfb.log")"
  sleep 0.1
done
[ -s "$work/display" ] || skip "Xvfb gave no display"

export DISPLAY=":$(cat "$work/display")"
export HOME="$work/home" XDG_DATA_HOME="$work/home/data" XDG_CACHE_HOME="$work/home/cache"
export XDG_RUNTIME_DIR="$work/run" QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
mkdir -p "$HOME" && mkdir -m 700 "$XDG_RUNTIME_DIR"
dbus-run-session -- "$python" "$here/screen_reader.py" "$game"
