# gofmt lists the files that it would change.
execute_process(COMMAND ${GOFMT} -l ${FILES} OUTPUT_VARIABLE unformatted RESULT_VARIABLE result)
if(NOT result EQUAL 0 OR unformatted)
  message(FATAL_ERROR "gofmt would change: ${unformatted}")
endif()
