# Checks the include lines of src/ against the layer order:
#   cmake -DQX_ROOT=<tree> -DQX_LAYERS=<layer>|<layer>|... -P CheckLayers.cmake
# Layers are listed lowest first and separated by "|"; folders of one layer are joined
# by ",". A file under src/<folder>/ may include its own folder and the folders of
# earlier layers, never a later layer, a sibling of its layer, or a folder beside src/
# (fakehost, tests, apps, bench, fuzz, support, or any other). Every folder under src/
# must be in a layer.

cmake_minimum_required(VERSION 3.25)

if(NOT QX_ROOT OR NOT QX_LAYERS)
  message(FATAL_ERROR "usage: cmake -DQX_ROOT=<tree> -DQX_LAYERS=<a|b|c,d|...> -P CheckLayers.cmake")
endif()

string(REPLACE "|" ";" layers "${QX_LAYERS}")
set(folders "")
set(rank 0)
foreach(layer IN LISTS layers)
  string(REPLACE "," ";" layer_folders "${layer}")
  foreach(folder IN LISTS layer_folders)
    set(rank_${folder} ${rank})
    list(APPEND folders ${folder})
  endforeach()
  math(EXPR rank "${rank} + 1")
endforeach()

set(outside fakehost tests apps bench fuzz)
set(include_regex "^[ \t]*#[ \t]*include[ \t]*\"([^\"]*)\"")
set(problems "")

file(GLOB entries LIST_DIRECTORIES true RELATIVE ${QX_ROOT}/src ${QX_ROOT}/src/*)
foreach(entry IN LISTS entries)
  if(IS_DIRECTORY ${QX_ROOT}/src/${entry} AND NOT DEFINED rank_${entry})
    list(APPEND problems "src/${entry}/ is in no layer")
  endif()
endforeach()

foreach(folder IN LISTS folders)
  file(GLOB_RECURSE files RELATIVE ${QX_ROOT} ${QX_ROOT}/src/${folder}/*.h ${QX_ROOT}/src/${folder}/*.hpp
       ${QX_ROOT}/src/${folder}/*.cpp ${QX_ROOT}/src/${folder}/*.inc)
  list(SORT files)
  foreach(file IN LISTS files)
    file(STRINGS ${QX_ROOT}/${file} lines REGEX "${include_regex}")
    foreach(line IN LISTS lines)
      string(REGEX MATCH "${include_regex}" _ "${line}")
      set(included "${CMAKE_MATCH_1}")
      if(NOT included MATCHES "^([^/]+)/")
        continue()  # beside the including file
      endif()
      set(target "${CMAKE_MATCH_1}")
      if(target STREQUAL folder)
        continue()
      endif()
      if(DEFINED rank_${target})
        if(rank_${target} GREATER_EQUAL rank_${folder})
          list(APPEND problems "${file} includes \"${included}\": ${target} is not below ${folder}")
        endif()
      elseif(target IN_LIST outside OR target STREQUAL ".." OR IS_DIRECTORY ${QX_ROOT}/${target})
        list(APPEND problems "${file} includes \"${included}\", which src/ may not use")
      endif()
    endforeach()
  endforeach()
endforeach()

if(problems)
  list(JOIN problems "\n  " text)
  message(FATAL_ERROR "Includes against the layer order (${QX_LAYERS}):\n  ${text}")
endif()
message(STATUS "Layers kept: ${QX_LAYERS}")
