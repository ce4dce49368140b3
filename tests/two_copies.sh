#!/usr/bin/env bash
# Two copies of the game on one best list, both started before either
# saves: whichever saves second puts its entry into the list the first one
# saved, so no entry is lost; an entry that no longer reaches a place is
# refused with the no-place message.
#   two_copies.sh WORK DRIVE...   (DRIVE may be more than one word: an
#                                  emulator before the program)
set -euo pipefail
work=$1
drive=("${@:2}")
dice="6 1 1 1 6 1 1 1 6 1 1 1"
list_file="$work/wuerfelhof/zifdach.txt"
crlf=$'\r\n'

fail() {
  echo "FAIL: $*" >&2
  exit 1
}

# Starts a copy called $1 on the shared drive root; its commands go to fd
# $2 and its output comes from fd $3.
start_copy() {
  mkfifo "$work/$1.in" "$work/$1.out"
  "${drive[@]}" --drive-root "$work" --dice "$dice" <"$work/$1.in" >"$work/$1.out" &
  eval "exec $2>\"$work/$1.in\" $3<\"$work/$1.out\""
}

# Reads the copy's output on fd $1 until a line equals $2.
await() {
  local line
  while IFS= read -r -t 20 -u "$1" line; do
    [ "$line" = "$2" ] && return 0
  done
  fail "no line '$2'"
}

# The copy on fd $1 wins a round with credit $2 and opens the entry window.
reach_entry() {
  printf '%s\n' start "click frmSpielfeld.imgNeu" "set Guthaben(0) = $2" \
    "click frmSpielfeld.imgWuerfeln" "wait 700" "click frmSpielfeld.imgAuswahl(3)" "wait 1500" \
    "click frmSpielfeld.imgWuerfeln" "wait 700" "click frmSpielfeld.imgAuswahl(2)" "wait 1500" \
    "click frmSpielfeld.imgWuerfeln" "wait 2200" "click frmSpielfeld.imgBeste" \
    "click frmMsgJa.lblJa" "print frmBeste.Visible" >&"$1"
}

# The copy types name $2 into place $3 and leaves the window.
enter() {
  printf '%s\n' "type frmBeste.txtSpieler($3) $2" "click frmBeste.cmdEnde" \
    "print frmBeste.Visible" >&"$1"
}

# Two copies with credits $1 and $2 before their winning round, both at the
# entry window.
run() {
  rm -rf "$work"
  # The data folder of an earlier start: two first starts at the same
  # moment may both find it missing, and the slower one is told that it
  # could not be made.
  mkdir -p "$work/wuerfelhof"
  start_copy a 3 4
  start_copy b 5 6
  reach_entry 3 "$1"
  reach_entry 5 "$2"
  await 4 "frmBeste.Visible = True"
  await 6 "frmBeste.Visible = True"
}

finish() {
  exec 3>&- 5>&- 4<&- 6<&-
  wait
}

# The list file must hold exactly these ten lines.
expect_list() {
  printf '%s\r\n' "$@" >"$work/expected"
  cmp -s "$work/expected" "$list_file" || fail "the list is: $(cat -A "$list_file")"
}

# Anna (30) saves first, then Bert (28); and the other way round.
for order in "3 4 Anna 5 6 Bert" "5 6 Bert 3 4 Anna"; do
  set -- $order
  run 27 25
  enter "$1" "$3" 0
  await "$2" "frmBeste.Visible = False"
  enter "$4" "$6" 0
  printf '%s\n' "print frmBeste.lstName.List(0)" "print frmBeste.lstName.List(1)" >&"$4"
  await "$5" "frmBeste.lstName.List(0) = Anna"
  await "$5" "frmBeste.lstName.List(1) = Bert"
  finish
  expect_list Anna Bert Niemand Niemand Niemand 30 28 26 24 22
done

# Anna's 30 pushes the 20 that Carla's 20 points would have passed out of
# the list: Carla is told that there is no place, and the list stays.
run 27 17
enter 3 Anna 0
await 4 "frmBeste.Visible = False"
enter 5 Carla 4
printf '%s\n' "print frmMsgOk.lblMeldung.Caption" "click frmMsgOk.lblOk" \
  "print frmBeste.lstName.List(0)" >&5
await 6 'frmMsgOk.lblMeldung.Caption = Ein Eintrag in die Liste der »Besten Spieler«\r\nist leider nicht möglich!'
await 6 "frmBeste.lstName.List(0) = Anna"
finish
expect_list Anna Niemand Niemand Niemand Niemand 30 26 24 22 20
