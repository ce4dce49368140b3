# Runs one driver script as a test.
#   DRIVE        the zifferndach-drive program
#   EMULATOR     what runs it, words separated by |; empty to run it as it is
#   SCRIPT       the script; NAME.out beside it, if present, is the exact output
#   WORK         a scratch folder, made empty first
#   SYSTEM_ROOT  the folder under which the system's own data folder lies
#                with --system; for the driver it is the user's data folder
#   SEPARATOR    the system's path separator: slash or backslash
#   VERSION      the program's version, written @VERSION@ in a script and its output
# Lines at the top of a script may say:
#   # drive: OPTIONS      options for the driver; @WORK@ stands for the scratch folder
#   # file: PATH = TEXT   a file made under the scratch folder first (\r, \n, \xHH)
#   # exit: N             the exit code expected (0 when not said)
#   # after: PATH = TEXT  a file that must hold exactly TEXT after the run
# A PATH that begins with @SYSTEM@ is under SYSTEM_ROOT instead. In the
# commands, @SEP@ stands for the system's path separator, and a line
# @THROWS A B@ for the human player's three throws up to the third: the
# first placed at A, the second at B, each after its spin and the computer
# players' turns.
cmake_policy(VERSION 3.25)
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(STRINGS "${SCRIPT}" header REGEX "^# (drive|file|exit|after):")
set(options "")
set(expected_exit 0)
set(after_checks "")
# A file's place: under the scratch folder unless it says otherwise.
function(place_of name result)
  if(name MATCHES "^@SYSTEM@/(.*)$")
    set(${result} "${SYSTEM_ROOT}/${CMAKE_MATCH_1}" PARENT_SCOPE)
  else()
    set(${result} "${WORK}/${name}" PARENT_SCOPE)
  endif()
endfunction()
# A file's text as written in a script: \r, \n and \xHH for the bytes.
function(unescape text result)
  string(REPLACE "\\r" "\r" text "${text}")
  string(REPLACE "\\n" "\n" text "${text}")
  while(text MATCHES "\\\\x([0-9A-Fa-f][0-9A-Fa-f])")
    set(hex "${CMAKE_MATCH_1}")
    math(EXPR code "0x${hex}")
    string(ASCII ${code} char)
    string(REPLACE "\\x${hex}" "${char}" text "${text}")
  endwhile()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()
# Each run on the system's own drive starts there without a data folder.
if(header MATCHES "# drive:[^;]*--system")
  file(REMOVE_RECURSE "${SYSTEM_ROOT}/wuerfelhof")
endif()
foreach(line IN LISTS header)
  string(REPLACE "@WORK@" "${WORK}" line "${line}")
  if(line MATCHES "^# drive: (.*)$")
    separate_arguments(more UNIX_COMMAND "${CMAKE_MATCH_1}")
    list(APPEND options ${more})
  elseif(line MATCHES "^# file: ([^ ]+) = (.*)$")
    place_of("${CMAKE_MATCH_1}" path)
    unescape("${CMAKE_MATCH_2}" text)
    get_filename_component(dir "${path}" DIRECTORY)
    file(MAKE_DIRECTORY "${dir}")
    file(WRITE "${path}" "${text}")
  elseif(line MATCHES "^# exit: ([0-9]+)$")
    set(expected_exit "${CMAKE_MATCH_1}")
  elseif(line MATCHES "^# after: ([^ ]+) = (.*)$")
    list(APPEND after_checks "${CMAKE_MATCH_1}")
    set("after_${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}")
  endif()
endforeach()

file(READ "${SCRIPT}" commands)
if(SEPARATOR STREQUAL "backslash")
  string(REPLACE "@SEP@" "\\" commands "${commands}")
else()
  string(REPLACE "@SEP@" "/" commands "${commands}")
endif()
string(REPLACE "@VERSION@" "${VERSION}" commands "${commands}")
set(throw "click frmSpielfeld.imgWuerfeln\nwait 700\n")
set(place "wait 1500\n")
string(REGEX REPLACE "@THROWS ([1-3]) ([1-3])@"
  "${throw}click frmSpielfeld.imgAuswahl(\\1)\n${place}${throw}click frmSpielfeld.imgAuswahl(\\2)\n${place}click frmSpielfeld.imgWuerfeln"
  commands "${commands}")
file(WRITE "${WORK}.txt" "${commands}")

string(REPLACE "|" ";" emulator "${EMULATOR}")
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env "XDG_DATA_HOME=${SYSTEM_ROOT}" ${emulator} "${DRIVE}" ${options}
    "${WORK}.txt"
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE code)
if(NOT code EQUAL expected_exit)
  message(FATAL_ERROR "exit ${code}, expected ${expected_exit}\n--- output\n${out}--- errors\n${err}")
endif()
string(REGEX REPLACE "\\.txt$" ".out" expected_file "${SCRIPT}")
if(EXISTS "${expected_file}")
  file(READ "${expected_file}" expected)
  string(REPLACE "@VERSION@" "${VERSION}" expected "${expected}")
  if(NOT out STREQUAL expected)
    message(FATAL_ERROR "output differs\n--- expected\n${expected}--- actual\n${out}--- errors\n${err}")
  endif()
endif()

# Files compared byte for byte.
foreach(path IN LISTS after_checks)
  unescape("${after_${path}}" text)
  string(HEX "${text}" expected_hex)
  place_of("${path}" file)
  if(NOT EXISTS "${file}")
    message(FATAL_ERROR "${path} is missing after the run")
  endif()
  file(READ "${file}" actual_hex HEX)
  if(NOT actual_hex STREQUAL expected_hex)
    message(FATAL_ERROR "${path} differs\n--- expected\n${expected_hex}\n--- actual\n${actual_hex}")
  endif()
endforeach()
