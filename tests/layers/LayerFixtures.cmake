# Runs the layer check on small trees: a clean one must pass, and each wrong arrow added
# to it must fail with the offending file named.
#   cmake -DQX_CHECK=<CheckLayers.cmake> -DQX_WORK=<scratch folder> -P LayerFixtures.cmake

cmake_minimum_required(VERSION 3.25)

set(layers "base|toolkit|tabview,cabinet|module")
set(clean_files
    "src/base/Text.h=#include \"base/Guid.h\""
    "src/base/Guid.h=#include <string>"
    "src/toolkit/Canvas.cpp=#include \"Canvas.h\"\n#include \"base/Text.h\""
    "src/tabview/TabImage.h=#include \"toolkit/Canvas.h\"\n#include \"tabview/TabImageItem.h\""
    "src/cabinet/Icon.h=  #  include \"toolkit/Canvas.h\" // spaced"
    "src/module/Table.cpp=#include \"tabview/TabImage.h\"\n#include \"cabinet/Icon.h\"")

set(failures "")

# run_case(<name> <text the failure must name, or "" to pass> <extra "path=content" ...>)
function(run_case name named)
  set(root ${QX_WORK}/${name})
  file(REMOVE_RECURSE ${root})
  foreach(entry IN LISTS clean_files ARGN)
    string(FIND "${entry}" "=" at)
    string(SUBSTRING "${entry}" 0 ${at} path)
    math(EXPR at "${at} + 1")
    string(SUBSTRING "${entry}" ${at} -1 content)
    file(WRITE ${root}/${path} "${content}\n")
  endforeach()
  execute_process(COMMAND ${CMAKE_COMMAND} -DQX_ROOT=${root} -DQX_LAYERS=${layers} -P ${QX_CHECK}
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(named STREQUAL "" AND NOT rc EQUAL 0)
    set(failures "${failures}\n${name}: expected to pass, got:\n${out}" PARENT_SCOPE)
  elseif(NOT named STREQUAL "")
    string(FIND "${out}" "${named}" found)
    if(rc EQUAL 0 OR found EQUAL -1)
      set(failures "${failures}\n${name}: expected a failure naming ${named}, got ${rc}:\n${out}" PARENT_SCOPE)
    endif()
  endif()
endfunction()

run_case(clean "")
run_case(backward "src/toolkit/Back.cpp" "src/toolkit/Back.cpp=#include \"tabview/TabImage.h\"")
run_case(same_layer "src/cabinet/Bar.h" "src/cabinet/Bar.h=#include \"tabview/TabImage.h\"")
run_case(fakehost "src/base/Fake.h" "src/base/Fake.h=#include \"fakehost/FakeHost.h\"")
run_case(unlisted_folder "src/extra/" "src/extra/Extra.h=#include \"base/Text.h\"")

if(failures)
  message(FATAL_ERROR "${failures}")
endif()
