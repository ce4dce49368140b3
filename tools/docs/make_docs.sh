#!/usr/bin/env bash
# Remakes the pictures and the documents of the game from the real program:
#   docs/src/images/*.png   its windows, for the two documents
#   docs/spielfeld-*.png    the playing field at scale 1 and 2, for the README
#   docs/bildschirm.png     the whole screen, under Xvfb with openbox
#   assets/*.pdf            the documents the game opens with F1 and Hilfe
#
#   tools/docs/make_docs.sh [BUILD_DIR]        (default: build/docs)
#
# Needs what ./build.sh installs, and Xvfb, openbox, xdotool, ImageMagick and
# x11-utils for the picture of the whole screen. The player's own data,
# settings and best list are never touched.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(realpath -m "${1:-$root/build/docs}")
bin=$build/bin

for tool in cmake Xvfb openbox xdotool xprop import; do
  command -v "$tool" >/dev/null || { echo "make_docs: $tool is missing" >&2; exit 1; }
done

work=$(mktemp -d "${TMPDIR:-/tmp}/zd-docs-XXXXXX")
pids=()
stop() {
  local i
  # The last started goes first: the game, then the window manager, then X.
  for ((i = ${#pids[@]} - 1; i >= 0; i--)); do
    kill "${pids[i]}" 2>/dev/null || true
    wait "${pids[i]}" 2>/dev/null || true
  done
  pids=()
}
trap 'stop; rm -rf "$work"' EXIT
fail() {
  echo "make_docs: $*" >&2
  for log in "$work"/*.log; do
    if [ -s "$log" ]; then echo "--- $log" >&2; cat "$log" >&2; fi
  done
  exit 1
}
waitfor() {  # WHAT COMMAND...: tries for up to ten seconds
  local what=$1 i
  shift
  for ((i = 0; i < 100; i++)); do
    "$@" >/dev/null 2>&1 && return 0
    sleep 0.1
  done
  echo "make_docs: no $what" >&2
  for log in "$work"/*.log; do
    if [ -s "$log" ]; then echo "--- $log" >&2; cat "$log" >&2; fi
  done
  return 1
}
mkdir -m 700 "$work/run"
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$work/run}"

cmake -S "$root" -B "$build" -DZD_BUILD_TESTS=OFF -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build" -j2 --target zifferndach shoot make_pdf

# Only what this run takes is left in the folder the documents use.
mkdir -p "$root/docs/src/images"
rm -f "$root/docs/src/images/"*.png
"$bin/shoot" "$root/docs/src/images" "$root/docs"

# The whole screen: the grey table over the desktop and the playing field in
# front of it. A click on the table must leave the field in front.
screen() {
  local display field top active
  rm -rf "$work/display" "$work/data" "$work/cache" "$work/config"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$work/display" 2>"$work/xvfb.log" &
  pids+=($!)
  waitfor "X display" test -s "$work/display" || return 1
  display=":$(cat "$work/display")"
  waitfor "X server" env DISPLAY="$display" xdotool getdisplaygeometry || return 1
  DISPLAY=$display openbox --sm-disable >"$work/openbox.log" 2>&1 &
  pids+=($!)
  waitfor "window manager" env DISPLAY="$display" \
    xprop -root -notype _NET_SUPPORTING_WM_CHECK || return 1
  env DISPLAY="$display" XDG_RUNTIME_DIR="$work/run" XDG_DATA_HOME="$work/data" \
    XDG_CACHE_HOME="$work/cache" XDG_CONFIG_HOME="$work/config" QT_QPA_PLATFORM=xcb \
    "$bin/zifferndach" >"$work/game.log" 2>&1 &
  pids+=($!)
  waitfor "playing field" env DISPLAY="$display" \
    xdotool search --onlyvisible --name '^Zifferndach  Vers' || return 1
  # Time for the art to be drawn and the window manager to place everything.
  sleep 2
  field=$(DISPLAY=$display xdotool search --onlyvisible --name '^Zifferndach  Vers' | head -n 1)
  DISPLAY=$display import -window root "$root/docs/bildschirm.png" || return 1

  DISPLAY=$display xdotool mousemove 40 980 click 1 || return 1
  sleep 1
  top=$(DISPLAY=$display xprop -root -notype _NET_CLIENT_LIST_STACKING | sed 's/.*[ ,]//')
  active=$(DISPLAY=$display xdotool getactivewindow)
  if ((top != field || active != field)); then
    fail "after a click on the background the playing field is not in front"
  fi
  echo "$root/docs/bildschirm.png"
  echo "a click on the background leaves the playing field in front"
}
# Should the X server or the game not come up, all of it is tried afresh.
for attempt in 1 2 3; do
  if screen; then
    stop
    break
  fi
  stop
  ((attempt < 3)) || fail "the screen could not be taken"
  echo "make_docs: the screen failed, once more" >&2
done

"$bin/make_pdf" "$root/docs/src/Meldefenster.md" "$root/assets/Meldefenster.pdf"
"$bin/make_pdf" "$root/docs/src/Zifferndach.md" "$root/assets/Zifferndach.pdf"
