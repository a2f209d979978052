# The project's warnings, as errors.
set(ZAV_WARNING_FLAGS
    -Wall -Wextra -Wpedantic -Werror
    -Wcast-align -Wcast-qual -Wconversion -Wdouble-promotion -Wextra-semi -Wformat=2
    -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wshadow
    -Wsign-conversion -Wundef -Wunused)

# Turns them on for one of the project's own targets. They are private: nothing reaches the targets
# of a project that includes this one.
function(zav_enable_warnings target)
    if(ZAV_WARNINGS)
        target_compile_options(${target} PRIVATE ${ZAV_WARNING_FLAGS})
    endif()
endfunction()
