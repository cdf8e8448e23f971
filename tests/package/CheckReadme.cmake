# The first C++ block of README.md is the consumer that the package test builds and runs, letter for letter.
# Usage: cmake -DREADME=... -DSOURCE=... -P CheckReadme.cmake

file(READ ${README} readme)
file(READ ${SOURCE} source)
set(opening "```cpp\n")

string(FIND "${readme}" "${opening}" start)
if(start EQUAL -1)
    message(FATAL_ERROR "${README} has no C++ block")
endif()
string(LENGTH "${opening}" opening_length)
math(EXPR start "${start} + ${opening_length}")
string(SUBSTRING "${readme}" ${start} -1 rest)
string(FIND "${rest}" "```" end)
string(SUBSTRING "${rest}" 0 ${end} block)
if(NOT "${block}" STREQUAL "${source}")
    message(FATAL_ERROR "the first C++ block of ${README} differs from ${SOURCE}")
endif()
