# Runs one driver script as a test.
#   DRIVE   the zifferndach-drive program
#   SCRIPT  the script; NAME.out beside it, if present, is the exact output
#   WORK    a scratch folder, made empty first
# Lines at the top of a script may say:
#   # drive: OPTIONS      options for the driver; @WORK@ stands for the scratch folder
#   # file: PATH = TEXT   a file made under the scratch folder first (\r\n for CR LF)
#   # exit: N             the exit code expected (0 when not said)
cmake_policy(VERSION 3.25)
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(STRINGS "${SCRIPT}" header REGEX "^# (drive|file|exit):")
set(options "")
set(expected_exit 0)
foreach(line IN LISTS header)
  string(REPLACE "@WORK@" "${WORK}" line "${line}")
  if(line MATCHES "^# drive: (.*)$")
    separate_arguments(more UNIX_COMMAND "${CMAKE_MATCH_1}")
    list(APPEND options ${more})
  elseif(line MATCHES "^# file: ([^ ]+) = (.*)$")
    set(path "${WORK}/${CMAKE_MATCH_1}")
    string(REPLACE "\\r" "\r" text "${CMAKE_MATCH_2}")
    string(REPLACE "\\n" "\n" text "${text}")
    get_filename_component(dir "${path}" DIRECTORY)
    file(MAKE_DIRECTORY "${dir}")
    file(WRITE "${path}" "${text}")
  elseif(line MATCHES "^# exit: ([0-9]+)$")
    set(expected_exit "${CMAKE_MATCH_1}")
  endif()
endforeach()

execute_process(COMMAND "${DRIVE}" ${options} "${SCRIPT}"
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE code)
if(NOT code EQUAL expected_exit)
  message(FATAL_ERROR "exit ${code}, expected ${expected_exit}\n--- output\n${out}--- errors\n${err}")
endif()
string(REGEX REPLACE "\\.txt$" ".out" expected_file "${SCRIPT}")
if(EXISTS "${expected_file}")
  file(READ "${expected_file}" expected)
  if(NOT out STREQUAL expected)
    message(FATAL_ERROR "output differs\n--- expected\n${expected}--- actual\n${out}--- errors\n${err}")
  endif()
endif()
