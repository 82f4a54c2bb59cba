# Fails when LIBRARY exports a symbol, as NM shows it, that ALLOWED does not match, or none at all.
execute_process(COMMAND "${NM}" -D --defined-only --demangle "${LIBRARY}" OUTPUT_VARIABLE table
                COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE ";" "," table "${table}")
string(REGEX MATCHALL "[^\n]+" symbols "${table}")
list(LENGTH symbols count)
list(FILTER symbols EXCLUDE REGEX "^[0-9a-f]+ [A-Za-z] (${ALLOWED})")
if(count EQUAL 0 OR symbols)
  message(FATAL_ERROR "${count} symbols exported, among them: ${symbols}")
endif()
