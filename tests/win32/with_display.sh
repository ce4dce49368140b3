#!/bin/sh
# Runs a test of the Win32 front end under wine, on a display of its own.
#   with_display.sh PREFIX DPI PROGRAM [ARGUMENTS...]
# The wine prefix is the test's own, set to DPI pixels an inch (LogPixels)
# before the program starts. With no Xvfb to be had the test is skipped
# (exit 77), as wine can show no window without a display.
set -eu
prefix="$1" dpi="$2"
shift 2
here=$(dirname "$0")
if ! command -v Xvfb >/dev/null 2>&1; then
  echo "SKIP: no Xvfb, and wine shows no window without a display (apt-get install xvfb)"
  exit 77
fi
fd_file=$(mktemp)
Xvfb -displayfd 1 -screen 0 1600x1200x24 -nolisten tcp >"$fd_file" 2>/dev/null &
xvfb=$!
trap 'kill $xvfb 2>/dev/null; rm -f "$fd_file"' EXIT
for _ in $(seq 100); do
  [ -s "$fd_file" ] && break
  sleep 0.1
done
if ! [ -s "$fd_file" ]; then
  echo "SKIP: Xvfb did not start, and wine shows no window without a display"
  exit 77
fi
export DISPLAY=":$(head -n1 "$fd_file")"
# Each display has a server of its own: the one of the prefix must not live on
# with a display that is going away.
export WINEPREFIX="$prefix" WINEDEBUG=-all
wine=/usr/lib/wine
"$wine/wineserver" -k 2>/dev/null || true
[ -f "$prefix/system.reg" ] || "$wine/wine64" wineboot --init >/dev/null 2>&1
"$wine/wine64" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f \
  >/dev/null 2>&1
"$wine/wineserver" -w
status=0
"$wine/wine64" "$@" || status=$?
"$wine/wineserver" -k 2>/dev/null || true
exit $status
