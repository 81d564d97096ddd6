# The compiler warnings of our code, in one place. Every library, program,
# test and benchmark of ours links zr310_warnings PRIVATE; Qt's headers come
# in through its imported targets as system headers, so they do not warn.
# ZR310_WERROR turns our warnings into errors (scripts/dev test sets it).
option(ZR310_WERROR "Treat compiler warnings in our code as errors" OFF)

add_library(zr310_warnings INTERFACE)
if(MSVC)
    target_compile_options(zr310_warnings INTERFACE /W4 $<$<BOOL:${ZR310_WERROR}>:/WX>)
else()
    target_compile_options(zr310_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
        $<$<BOOL:${ZR310_WERROR}>:-Werror>)
endif()

# Stops the configure step when a library or program below DIR was added
# without zr310_warnings, so that none builds with fewer warnings unnoticed.
function(zr310_check_warnings dir)
    get_property(targets DIRECTORY ${dir} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(type MATCHES "^(STATIC_LIBRARY|SHARED_LIBRARY|OBJECT_LIBRARY|EXECUTABLE)$")
            get_target_property(libs ${target} LINK_LIBRARIES)
            if(NOT zr310_warnings IN_LIST libs)
                message(FATAL_ERROR "${target} (${dir}) does not link zr310_warnings: add "
                                    "target_link_libraries(${target} PRIVATE zr310_warnings)")
            endif()
        endif()
    endforeach()
    get_property(subdirs DIRECTORY ${dir} PROPERTY SUBDIRECTORIES)
    foreach(subdir IN LISTS subdirs)
        zr310_check_warnings(${subdir})
    endforeach()
endfunction()
