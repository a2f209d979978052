# Compares the names that a library exports with the list kept in the tree; an application is linked
# to them by name, and to no version of them.
#
# cmake -DNM=... -DREADELF=... -DLIBRARY=... -DLIST=... -P exports.cmake

execute_process(COMMAND "${NM}" -D --defined-only --format=just-symbols "${LIBRARY}"
    OUTPUT_VARIABLE exported COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" exported "${exported}")
file(STRINGS "${LIST}" expected REGEX "^[^#]")

set(added ${exported})
list(REMOVE_ITEM added ${expected})
set(removed ${expected})
list(REMOVE_ITEM removed ${exported})
# The constructors of complete objects of a table model: the class is abstract, so that no application
# can call them, and clang++ leaves them out.
list(FILTER removed EXCLUDE REGEX "^_ZN6SqlTblI[0-9]+[A-Za-z]+EC1E")
if(added OR removed)
    list(JOIN added "\n  " added)
    list(JOIN removed "\n  " removed)
    message(FATAL_ERROR "The exported names are not those of ${LIST}.\n"
        "Exported beyond the list (hide them in src/libzav.map, or extend the list):\n  ${added}\n"
        "Missing (linked applications no longer load):\n  ${removed}")
endif()

execute_process(COMMAND "${READELF}" --version-info --wide "${LIBRARY}"
    OUTPUT_VARIABLE versions COMMAND_ERROR_IS_FATAL ANY)
if(versions MATCHES "Version definition")
    message(FATAL_ERROR "The exported names carry a version.")
endif()
