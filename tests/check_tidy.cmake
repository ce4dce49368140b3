# The project's own sources through clang-tidy, with the checks of
# .clang-tidy, as this build compiles them; any finding fails. (Warning
# options that only gcc knows are no finding of clang's.)
execute_process(COMMAND ${RUN_CLANG_TIDY} -quiet -j ${JOBS} -p ${BUILD}
    -extra-arg=-Wno-unknown-warning-option
    "^${ROOT}/(ui|system|game|best|front|tests|bench|tools)/"
  WORKING_DIRECTORY ${ROOT} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
string(REGEX MATCHALL "[^\n]*(warning|error): [^\n]*" findings "${out}")
if(NOT result EQUAL 0 OR findings)
  string(REPLACE ";" "\n" text "${findings}")
  message(FATAL_ERROR "clang-tidy found:\n${text}\n${err}")
endif()
message(STATUS "clang-tidy: no findings")
