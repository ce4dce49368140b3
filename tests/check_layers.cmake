# The logic and the toolkit model are standard C++ only: no Qt header may be
# included outside ui/qt and the Qt tests.
file(GLOB_RECURSE sources
  ${ROOT}/game/* ${ROOT}/best/* ${ROOT}/system/* ${ROOT}/ui/model/* ${ROOT}/ui/forms/*
  ${ROOT}/ui/drive/*)
set(offenders "")
foreach(source IN LISTS sources)
  file(STRINGS "${source}" hits REGEX "#[ \t]*include[ \t]*[<\"](Q[A-Za-z]+|Qt[A-Za-z]*/)")
  if(hits)
    list(APPEND offenders "${source}: ${hits}")
  endif()
endforeach()
if(offenders)
  string(REPLACE ";" "\n" offenders "${offenders}")
  message(FATAL_ERROR "Qt included outside the Qt layer:\n${offenders}")
endif()
