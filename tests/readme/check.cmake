# The code on the front page is the code of the example, which is built and run.
# usage: cmake -DREADME=... -DEXAMPLE=... -P check.cmake
file(READ ${README} readme)
file(READ ${EXAMPLE} example)
if(NOT readme MATCHES "```cpp\n([^`]*)```")
  message(FATAL_ERROR "${README} shows no code")
endif()
string(STRIP "${CMAKE_MATCH_1}" shown)
string(REGEX REPLACE "\n    " "\n" example "${example}")
string(FIND "${example}" "${shown}" place)
if(place EQUAL -1)
  message(FATAL_ERROR "the code in ${README} is not that of ${EXAMPLE}:\n${shown}")
endif()
