# The proof that the core cannot use Qt: with exactly the include path of the core a unit compiles, but no longer once it
# includes Qt. Run as a script with COMPILER, INCLUDES (joined by "|") and FOLDER to work in.
string(REPLACE "|" ";" folders "${INCLUDES}")
list(TRANSFORM folders PREPEND "-I")
set(unit "${FOLDER}/unit.cpp")
file(MAKE_DIRECTORY "${FOLDER}")

function(compile result)
  execute_process(COMMAND "${COMPILER}" -std=c++20 -fsyntax-only ${folders} ${ARGN} "${unit}"
                  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(${result} ${status} PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

set(core "#include \"Kt_data_01.h\"\n#include \"Kt_util_01.h\"\n#include \"Reminder_Utils.h\"\nint main() { return 0; }\n")
file(WRITE "${unit}" "${core}")
compile(status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "The core's headers do not compile by themselves:\n${output}")
endif()

foreach(header QObject QtCore QtCore/QObject QtWidgets/QWidget)
  file(WRITE "${unit}" "#include <${header}>\n${core}")
  compile(status)
  if(status EQUAL 0)
    message(FATAL_ERROR "<${header}> can be included from the core.")
  endif()
  # Where such a header is to be found, the same unit compiles: the path alone made it fail.
  file(WRITE "${FOLDER}/qt/${header}" "")
  compile(status "-I${FOLDER}/qt")
  file(REMOVE_RECURSE "${FOLDER}/qt")
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "The unit fails for another reason than <${header}>:\n${output}")
  endif()
endforeach()
