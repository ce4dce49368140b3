# Makes an MSI from its .wxs and the gathered files, so that the same
# inputs give the same bytes. wixl stamps the package with the time it runs
# and a random package code: it runs at the release's date here instead,
# and the package code is then set to one derived from what the package
# holds, which also gives a package of other content another code, as
# Windows Installer requires.
#   WXS FILES MSI DATE UPGRADE_CODE AUTHORS WIXL MSIBUILD FAKETIME
cmake_policy(VERSION 3.25)
file(READ "${WXS}" content)
file(GLOB files "${FILES}/*")
list(SORT files)
foreach(file IN LISTS files)
  file(SHA256 "${file}" hash)
  string(APPEND content "${hash}\n")
endforeach()
string(SHA256 content_hash "${content}")
string(UUID package_code NAMESPACE ${UPGRADE_CODE} NAME "package ${content_hash}" TYPE SHA1 UPPER)

file(REMOVE "${MSI}")
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env TZ=UTC "${FAKETIME}" "${DATE} 00:00:00"
    "${WIXL}" -a x64 -o "${MSI}" "${WXS}"
  WORKING_DIRECTORY "${FILES}" RESULT_VARIABLE code ERROR_VARIABLE err)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "wixl failed: ${err}")
endif()
execute_process(
  COMMAND "${MSIBUILD}" "${MSI}" -s Zifferndach "${AUTHORS}" "x64;1031" "{${package_code}}"
  RESULT_VARIABLE code)
if(NOT code EQUAL 0)
  file(REMOVE "${MSI}")
  message(FATAL_ERROR "msibuild could not set the package code")
endif()
