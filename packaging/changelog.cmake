# The changelog's newest entry is this version; who signed it maintains the
# package, and its date is the release's date everywhere (ZD_RELEASE_DATE,
# YYYY-MM-DD). Read by every package, the Debian one and the Windows ones.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/changelog newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^zifferndach \\(${PROJECT_VERSION}\\) ")
  message(FATAL_ERROR "packaging/changelog does not begin with version ${PROJECT_VERSION}")
endif()
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/changelog signed REGEX "^ -- " LIMIT_COUNT 1)
string(REGEX MATCH "^ -- ([^>]+>)" _ "${signed}")
set(ZD_MAINTAINER "${CMAKE_MATCH_1}")
string(REGEX MATCH "([0-9]+) ([A-Z][a-z][a-z]) ([0-9]+)" _ "${signed}")
set(year ${CMAKE_MATCH_3})
set(months Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
list(FIND months ${CMAKE_MATCH_2} month)
# Two digits each: 101 to 112 and 101 to 131, less the leading 1.
math(EXPR month "${month} + 101")
math(EXPR day "${CMAKE_MATCH_1} + 100")
string(SUBSTRING ${month} 1 2 month)
string(SUBSTRING ${day} 1 2 day)
set(ZD_RELEASE_DATE ${year}-${month}-${day})
