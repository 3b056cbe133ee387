# The icon in the sizes that desktops ask for, made from two drawings: below 32 pixels a simpler one. They are installed,
# and all but the largest are in the program, for windows of X11.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
set(icon com.tessary.Tessary)
foreach(size 16 24 32 48 64 128 256 512)
    set(drawing ${CMAKE_SOURCE_DIR}/packaging/icons/${icon}.svg)
    if(size LESS 32)
        set(drawing ${CMAKE_SOURCE_DIR}/packaging/icons/${icon}-small.svg)
    endif()
    set(folder ${CMAKE_BINARY_DIR}/icons/${size}x${size}/apps)
    add_custom_command(OUTPUT ${folder}/${icon}.png DEPENDS ${drawing} VERBATIM
                       COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
                       COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${folder}/${icon}.png ${drawing})
    set_source_files_properties(${folder}/${icon}.png PROPERTIES QT_RESOURCE_ALIAS ${size}.png)
    list(APPEND pictures ${folder}/${icon}.png)
endforeach()
target_sources(tessary PRIVATE ${pictures})
list(REMOVE_AT pictures -1)
qt_add_resources(tessary icon PREFIX /icon FILES ${pictures})
