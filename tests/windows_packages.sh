#!/usr/bin/env bash
# The installer and the zip under wine, in a wine prefix of this test's own:
# install quietly, find the program, its Start-menu entry and its entry in
# Add/Remove Programs, start it until it has made its data folder, install
# the same version again and the next one over it, uninstall; nothing may
# be left but the data folder with the player's list, untouched.
#   windows_packages.sh WORK WINE_RUN MSI NEXT_MSI ZIP PROGRAM SCRIPT VERSION AUTHORS HOMEPAGE
# PROGRAM is the installed program's name; the headless program (SCRIPT is
# then its script) stands in for the game until the game is built.
set -euo pipefail
work=$1 wine_run=$2 msi=$3 next_msi=$4 zip=$5 program=$6 script=$7
version=$8 authors=$9 homepage=${10}
prefix=$work/wine
drive=$prefix/drive_c
folder="$drive/Program Files/Zifferndach"
list=$drive/wuerfelhof/zifdach.txt
uninstall_keys='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall'

fail() {
  echo "FAIL: $*" >&2
  exit 1
}
wine() { sh "$wine_run" "$prefix" "$@"; }
windows_path() { printf 'Z:%s' "${1//\//\\}"; }
# Runs msiexec with the given options and package, and tells how long it took.
msiexec() {
  local start
  start=$(date +%s%N)
  wine msiexec "$1" "$(windows_path "$2")" /qn || fail "msiexec $1 $(basename "$2") gave $?"
  echo "msiexec $1 $(basename "$2"): $((($(date +%s%N) - start) / 1000000)) ms"
}
# Every file and folder under C:, but what wine itself keeps changing.
files_on_c() {
  (cd "$drive" && find . | grep -v -e '^./windows/' -e '/Temp/' -e '/AppData/Local/' | sort)
}
# The entries of Add/Remove Programs named Zifferndach, each with its values.
arp_entries() {
  wine reg query "$uninstall_keys" /s | tr -d '\r' |
    awk '/^HKEY/ { key = $0 } /DisplayName.*Zifferndach/ { print key }' |
    while read -r key; do wine reg query "$key" | tr -d '\r'; done
}
shortcut() { find "$drive" -name Zifferndach.lnk; }
# Wine's server and services outlive a program for a while, holding the
# test's output open; they and the display go with the test.
cleanup() {
  WINEPREFIX=$prefix /usr/lib/wine/wineserver -k 2>/dev/null || true
  [ -z "${xvfb:-}" ] || kill "$xvfb"
}
trap cleanup EXIT

rm -rf "$work"
mkdir -p "$work"
wine wineboot --init
before=$(files_on_c)

msiexec /i "$msi"
[ -f "$folder/$program.exe" ] || fail "no $program.exe in Program Files\\Zifferndach"
[ -n "$(shortcut)" ] || fail "no Start-menu entry"
entry=$(arp_entries)
for value in "DisplayVersion.*$version" "Publisher.*$authors" "HelpLink.*$homepage"; do
  grep -q "$value" <<<"$entry" || fail "Add/Remove Programs lacks $value in: $entry"
done

# The portable zip holds exactly what the installer installs.
python3 -m zipfile -e "$zip" "$work/zip"
diff -r "$work/zip/Zifferndach" "$folder" || fail "the zip and the installation differ"

# The game makes its data folder and list at its first start.
if [ "$program" = zifferndach ]; then
  # It needs a display, and is started through its Start-menu entry.
  Xvfb -displayfd 5 -screen 0 1024x768x24 5>"$work/display" 2>/dev/null &
  xvfb=$!
  for _ in $(seq 100); do
    [ -s "$work/display" ] && break
    sleep 0.1
  done
  DISPLAY=:$(cat "$work/display") wine start /unix "$(shortcut)"
  for _ in $(seq 150); do
    [ -s "$list" ] && break
    sleep 0.2
  done
  cleanup
  xvfb=
else
  wine "$folder/$program.exe" --system "$(windows_path "$script")" >/dev/null
fi
[ -s "$list" ] || fail "the program made no list in C:\\wuerfelhof"
cp "$list" "$work/list"

msiexec /i "$msi"
msiexec /i "$next_msi"
entry=$(arp_entries)
[ "$(grep -c DisplayVersion <<<"$entry")" = 1 ] || fail "not one entry after the upgrade: $entry"
grep -q "DisplayVersion.*$version" <<<"$entry" && fail "the older version is still listed: $entry"
[ -f "$folder/$program.exe" ] || fail "the upgrade removed the program"

msiexec /x "$next_msi"
[ -z "$(arp_entries)" ] || fail "still in Add/Remove Programs"
cmp "$list" "$work/list" || fail "the list changed"
left=$(comm -13 <(echo "$before") <(files_on_c) | grep -v '^./wuerfelhof' || true)
[ -z "$left" ] || fail "left behind: $left"
