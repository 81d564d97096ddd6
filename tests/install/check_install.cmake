# cmake -DBUILD_DIR=<build> -DPREFIX=<scratch dir> -DWITH_GUI=ON|OFF -DWITH_SIM=ON|OFF
#       -P check_install.cmake
# Installs the build into PREFIX (emptied first) and checks that the programs
# start and that the launcher, the data file type and the icons are there and
# agree with each other.

cmake_minimum_required(VERSION 3.21)

set(failures "")
macro(fail text)
    string(APPEND failures "\n  ${text}")
endmacro()

# Runs a command; a non-zero exit is a failure named by `what`.
function(run_checked what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
    if(NOT result EQUAL 0)
        set(failures "${failures}\n  ${what} (exit ${result}): ${out}" PARENT_SCOPE)
    endif()
endfunction()

foreach(var BUILD_DIR PREFIX)
    if(NOT ${var})
        message(FATAL_ERROR "check_install: -D${var}=... is missing")
    endif()
endforeach()

file(REMOVE_RECURSE "${PREFIX}")
run_checked("cmake --install" ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${PREFIX}")

set(programs zr310-cli)
set(files share/doc/zr310/60-zr310-cable.rules share/doc/zr310/README.serial)
if(WITH_SIM)
    list(APPEND programs zr310-sim)
endif()
if(WITH_GUI)
    list(APPEND programs zr310)
    set(launcher "${PREFIX}/share/applications/zr310.desktop")
    set(mime_xml "${PREFIX}/share/mime/packages/zr310.xml")
    list(APPEND files share/applications/zr310.desktop share/mime/packages/zr310.xml
         share/icons/hicolor/scalable/apps/zr310.svg
         share/icons/hicolor/scalable/mimetypes/application-x-zr310-data.svg
         share/icons/hicolor/48x48/mimetypes/application-x-zr310-data.png)
    foreach(size 16 22 24 32 48 64 128 256)
        list(APPEND files share/icons/hicolor/${size}x${size}/apps/zr310.png)
    endforeach()
endif()
foreach(program ${programs})
    list(APPEND files bin/${program})
endforeach()

foreach(file ${files})
    if(NOT EXISTS "${PREFIX}/${file}")
        fail("not installed: ${file}")
    endif()
endforeach()
foreach(program ${programs})
    if(EXISTS "${PREFIX}/bin/${program}")
        run_checked("${program} --help" "${PREFIX}/bin/${program}" --help)
    endif()
endforeach()

if(WITH_GUI AND EXISTS "${launcher}" AND EXISTS "${mime_xml}")
    file(READ "${mime_xml}" xml)
    string(REGEX MATCH "<mime-type type=\"([^\"]+)\"" _ "${xml}")
    set(mime_type "${CMAKE_MATCH_1}")
    if(NOT xml MATCHES "<glob pattern=\"\\*\\.k720\"/>")
        fail("zr310.xml has no glob for *.k720")
    endif()

    file(STRINGS "${launcher}" entries)
    foreach(entry "Exec=zr310 %f" "Icon=zr310" "MimeType=${mime_type};")
        if(NOT entry IN_LIST entries)
            fail("zr310.desktop lacks the line '${entry}'")
        endif()
    endforeach()

    find_program(xmllint xmllint)
    if(xmllint)
        run_checked("xmllint zr310.xml" ${xmllint} --noout "${mime_xml}")
    endif()
    find_program(validate desktop-file-validate)
    if(validate)
        run_checked("desktop-file-validate" ${validate} "${launcher}")
    endif()

    # What a desktop makes of the two files: *.k720 is the type, and the type
    # opens with zr310.
    find_program(update_mime update-mime-database)
    if(update_mime)
        run_checked("update-mime-database" ${update_mime} "${PREFIX}/share/mime")
        set(globs "")
        if(EXISTS "${PREFIX}/share/mime/globs2")
            file(READ "${PREFIX}/share/mime/globs2" globs)
        endif()
        if(NOT globs MATCHES ":${mime_type}:\\*\\.k720\n")
            fail("update-mime-database does not map *.k720 to '${mime_type}'")
        endif()
    endif()
    find_program(update_desktop update-desktop-database)
    if(update_desktop)
        run_checked("update-desktop-database" ${update_desktop} "${PREFIX}/share/applications")
        set(cache "")
        if(EXISTS "${PREFIX}/share/applications/mimeinfo.cache")
            file(READ "${PREFIX}/share/applications/mimeinfo.cache" cache)
        endif()
        if(NOT cache MATCHES "\n${mime_type}=zr310.desktop;")
            fail("update-desktop-database does not open '${mime_type}' with zr310.desktop")
        endif()
    endif()
endif()

if(failures)
    message(FATAL_ERROR "install check failed:${failures}")
endif()
message(STATUS "install check passed: ${PREFIX}")
