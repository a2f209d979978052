# Refuses an SQLite that was built without what the library cannot do without.

include(CheckCXXSourceCompiles)

# Whether a program that calls a function of SQLite can be linked; asked anew each time, since the next
# may be another SQLite.
function(zav_sqlite_has function result)
    set(CMAKE_REQUIRED_INCLUDES "${SQLite3_INCLUDE_DIRS}")
    set(CMAKE_REQUIRED_LIBRARIES "${SQLite3_LIBRARIES}")
    set(CMAKE_REQUIRED_QUIET ON)
    unset(ZAV_SQLITE_HAS CACHE)
    check_cxx_source_compiles(
        "#include <sqlite3.h>\nint main() { auto* volatile p = &${function}; return p == nullptr; }"
        ZAV_SQLITE_HAS)
    set(${result} "${ZAV_SQLITE_HAS}" PARENT_SCOPE)
    unset(ZAV_SQLITE_HAS CACHE)
endfunction()

# zav_needs_of_sqlite(<function> <option that takes it away> <what it is for>)
function(zav_needs_of_sqlite function option reason)
    zav_sqlite_has(${function} has)
    if(has)
        return()
    endif()
    # Where not even this can be linked, it says nothing: an SQLite that the including project builds
    # itself is not there yet.
    zav_sqlite_has(sqlite3_libversion can_be_linked)
    if(can_be_linked)
        message(FATAL_ERROR
            "${SQLite3_LIBRARIES} was built with ${option}: it lacks ${function}, ${reason}")
    endif()
endfunction()

zav_needs_of_sqlite(sqlite3_get_table SQLITE_OMIT_GET_TABLE "by which zav runs its queries.")
zav_needs_of_sqlite(sqlite3_progress_handler SQLITE_OMIT_PROGRESS_CALLBACK
    "by which zav ends a query that a bad file would let run forever.")
