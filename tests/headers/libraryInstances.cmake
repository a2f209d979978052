# Checks of the objects of an application that it takes the instances for the library's own records
# from the library, and makes those for its own record itself.
#
# cmake -DNM=<nm> -DOBJECTS=<object files> -P libraryInstances.cmake

execute_process(COMMAND "${NM}" --demangle ${OBJECTS} OUTPUT_VARIABLE symbols
    COMMAND_ERROR_IS_FATAL ANY)

set(library_instance
    "(SqlTbl<(FaultTypeDef|Descriptions)>(::|\n)|::getTbl<FaultTypeDef|::getTbl<Descriptions")
string(APPEND library_instance "|::setValueFromSqlResult<unsigned (short|int|long long)>)")

if(symbols MATCHES "\n[0-9a-f]+ [A-Za-z] [^\n]*${library_instance}[^\n]*")
    message(FATAL_ERROR "made again in the application:${CMAKE_MATCH_0}")
endif()
foreach(used IN ITEMS
        "SqlTbl<FaultTypeDef>::reorderColumns" "SqlTbl<Descriptions>::getSqlInsertValues"
        "Sqlite3Db::getTbl<FaultTypeDef" "Sqlite3Db::getTbl<Descriptions"
        "setValueFromSqlResult<unsigned int>")
    if(NOT symbols MATCHES " U [^\n]*${used}")
        message(FATAL_ERROR "not taken from the library: ${used}")
    endif()
endforeach()
foreach(own IN ITEMS "SqlTbl<[^\n]*Sensor>::reorderColumns" "Sqlite3Db::getTbl<[^\n]*Sensor")
    if(NOT symbols MATCHES "\n[0-9a-f]+ [A-Za-z] [^\n]*${own}")
        message(FATAL_ERROR "not made in the application: ${own}")
    endif()
endforeach()
