# The library's dynamic symbol table defines its two entry points and nothing else.
execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
                OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE " [^\n]*" "" names "${symbols}")
string(STRIP "${names}" names)
if(NOT names STREQUAL "zolLCMinit\nzolLCMterminate")
    message(FATAL_ERROR "Exported:\n${names}")
endif()
