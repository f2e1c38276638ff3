# One target a room of the house, made by one helper.

# exifcard_add_room(<name> [QT] [HEADERS …] [SOURCES …] [USES …] [WRAPS …])
#
# QT       the room draws with Qt; interface files are found in resources/interface
# HEADERS  the headers that other rooms may include; each must compile alone
# SOURCES  the translation units
# USES     the lower rooms, seen by whoever uses this one
# WRAPS    the third-party libraries, hidden inside this room
#
# Makes the static library exifcard_<name>, also known as exifcard::<name>.
function(exifcard_add_room name)
    cmake_parse_arguments(PARSE_ARGV 1 room "QT" "" "HEADERS;SOURCES;USES;WRAPS")
    if(room_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "exifcard_add_room(${name}): unknown arguments ${room_UNPARSED_ARGUMENTS}")
    endif()
    set(target exifcard_${name})
    if(room_SOURCES)
        add_library(${target} STATIC ${room_SOURCES})
        set(visibility PUBLIC)
        target_link_libraries(${target} PRIVATE ${room_WRAPS} PUBLIC exifcard_compiler)
    else()
        add_library(${target} INTERFACE)
        set(visibility INTERFACE)
        target_link_libraries(${target} INTERFACE exifcard_compiler)
    endif()
    add_library(exifcard::${name} ALIAS ${target})
    target_sources(${target} ${visibility} FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${room_HEADERS})
    target_include_directories(${target} ${visibility} "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${target} ${visibility} ${room_USES})
    set_target_properties(${target} PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        VERIFY_INTERFACE_HEADER_SETS ON)
    if(room_QT)
        target_sources(${target} PRIVATE ${room_HEADERS}) # Where automoc looks for classes with signals.
        target_link_libraries(${target} PUBLIC Qt6::Widgets)
        target_compile_definitions(${target} PUBLIC QT_NO_CAST_FROM_ASCII)
        set_target_properties(${target} PROPERTIES
            AUTOMOC ON
            AUTOUIC ON
            AUTOUIC_SEARCH_PATHS "${PROJECT_SOURCE_DIR}/resources/interface")
    endif()
endfunction()

# exifcard_add_module(<name> SOURCES … [USES …] [WRAPS …])
#
# Makes a loadable module, lib/exifcard/<name>.so, that a room opens on first need, so that a heavy library
# costs only those who use it. The module may share only headers with the program.
function(exifcard_add_module name)
    cmake_parse_arguments(PARSE_ARGV 1 module "" "" "SOURCES;USES;WRAPS")
    set(target exifcard_module_${name})
    add_library(${target} MODULE ${module_SOURCES})
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${target} PRIVATE exifcard_compiler ${module_USES} ${module_WRAPS})
    set_target_properties(${target} PROPERTIES
        PREFIX ""
        OUTPUT_NAME ${name}
        LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib/exifcard")
    install(TARGETS ${target} LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/exifcard")
endfunction()
