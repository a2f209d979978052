# Checks that a library stays small once it is stripped.
#
# cmake -DSTRIP=... -DLIBRARY=... -DSTRIPPED=... -DLIMIT=bytes -P size.cmake

file(COPY_FILE "${LIBRARY}" "${STRIPPED}")
execute_process(COMMAND "${STRIP}" "${STRIPPED}" COMMAND_ERROR_IS_FATAL ANY)
file(SIZE "${STRIPPED}" size)
message("${size} of ${LIMIT} bytes")
if(NOT size LESS LIMIT)
    message(FATAL_ERROR "The library has grown to ${size} bytes; the limit is ${LIMIT}.")
endif()
