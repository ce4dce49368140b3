# The logic and the toolkit model are standard C++ only: no Qt header may be
# included outside front/qt, and no Windows header outside the Windows
# platform in system/windows and the front ends.
file(GLOB_RECURSE sources
  ${ROOT}/game/* ${ROOT}/best/* ${ROOT}/system/* ${ROOT}/ui/model/* ${ROOT}/ui/forms/* ${ROOT}/ui/view/*
  ${ROOT}/front/drive/*)
set(offenders "")
foreach(source IN LISTS sources)
  file(STRINGS "${source}" hits REGEX "#[ \t]*include[ \t]*[<\"](Q[A-Za-z]+|Qt[A-Za-z]*/)")
  if(hits)
    list(APPEND offenders "${source}: ${hits}")
  endif()
  if(NOT source MATCHES "/system/windows/")
    file(STRINGS "${source}" hits REGEX "#[ \t]*include[ \t]*[<\"][Ww]indows\\.h")
    if(hits)
      list(APPEND offenders "${source}: ${hits}")
    endif()
  endif()
endforeach()
if(offenders)
  string(REPLACE ";" "\n" offenders "${offenders}")
  message(FATAL_ERROR "A toolkit's or system's header included below the front ends:\n${offenders}")
endif()
