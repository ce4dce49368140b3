#!/bin/sh
# Runs a Windows program of the cross build under wine64.
#   wine-run.sh PREFIX PROGRAM [ARGUMENTS...]
# The prefix is made on first use. One wine server stays up for a while
# after each program, so that a test run does not start wine afresh (about
# 3 s) for every test.
set -eu
export WINEPREFIX="$1" WINEDEBUG=-all
shift
wine=/usr/lib/wine
(
  flock 9
  [ -f "$WINEPREFIX/system.reg" ] || "$wine/wine64" wineboot --init >/dev/null 2>&1 9>&-
  # A server, and wine's own services that come with the first program on
  # it, live on after this program: none of them may hold its output open,
  # or a test would seem to run until they end. Starting a server fails
  # when one is up already.
  if "$wine/wineserver" -p30 </dev/null >/dev/null 2>&1 9>&-; then
    "$wine/wine64" wineboot </dev/null >/dev/null 2>&1 9>&-
  fi
) 9>"$WINEPREFIX.lock"
exec "$wine/wine64" "$@"
