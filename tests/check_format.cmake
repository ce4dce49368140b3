# Every C++ source of the project as .clang-format writes it.
file(GLOB_RECURSE sources RELATIVE ${ROOT}
  ${ROOT}/ui/*.cpp ${ROOT}/ui/*.h ${ROOT}/system/*.cpp ${ROOT}/system/*.h
  ${ROOT}/game/*.cpp ${ROOT}/game/*.h ${ROOT}/best/*.cpp ${ROOT}/best/*.h
  ${ROOT}/front/*.cpp ${ROOT}/front/*.h ${ROOT}/tests/*.cpp ${ROOT}/tests/*.h
  ${ROOT}/tools/*.cpp ${ROOT}/tools/*.h ${ROOT}/bench/*.cpp ${ROOT}/bench/*.h)
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror ${sources}
  WORKING_DIRECTORY ${ROOT} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "Not formatted: run clang-format -i on the files named above")
endif()
