# Tests in Python that need the interpreter of the system alone.

# kubelor_add_unittests(<prefix> <folder> TIMEOUT <s> [LABELS ...] [ENVIRONMENT ...] [EXCEPT <file>])
# One CTest entry `<prefix>_<subject>` for each file test_<subject>.py in the folder, where it runs, without a display.
function(kubelor_add_unittests prefix folder)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "TIMEOUT" "LABELS;ENVIRONMENT;EXCEPT")
  file(GLOB files CONFIGURE_DEPENDS RELATIVE "${folder}" "${folder}/test_*.py")
  list(REMOVE_ITEM files "" ${arg_EXCEPT})
  foreach(file IN LISTS files)
    cmake_path(GET file STEM module)
    string(REGEX REPLACE "^test_" "" subject "${module}")
    add_test(NAME ${prefix}_${subject} COMMAND "${Python_EXECUTABLE}" -B -m unittest --verbose ${module}
             WORKING_DIRECTORY "${folder}")
    set_tests_properties(${prefix}_${subject} PROPERTIES LABELS "${arg_LABELS}"
      ENVIRONMENT "PYTHONDONTWRITEBYTECODE=1;${arg_ENVIRONMENT}"
      ENVIRONMENT_MODIFICATION "DISPLAY=unset:;WAYLAND_DISPLAY=unset:")
    if(arg_TIMEOUT)
      set_tests_properties(${prefix}_${subject} PROPERTIES TIMEOUT ${arg_TIMEOUT})
    endif()
  endforeach()
endfunction()
