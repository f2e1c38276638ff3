# The third-party libraries, each used by the one service that wraps it.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(fmt REQUIRED)
find_package(spdlog REQUIRED)
find_package(ICU 72 REQUIRED COMPONENTS uc i18n)
pkg_check_modules(EXIV2 REQUIRED IMPORTED_TARGET exiv2)
pkg_check_modules(EXPAT REQUIRED IMPORTED_TARGET expat)
pkg_check_modules(FFMPEG REQUIRED IMPORTED_TARGET libavformat libavcodec libavutil libswscale)
pkg_check_modules(LIBRAW REQUIRED IMPORTED_TARGET libraw_r)
find_package(ZLIB REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Svg Widgets)
pkg_check_modules(FONTCONFIG REQUIRED IMPORTED_TARGET fontconfig)
pkg_check_modules(RLOTTIE REQUIRED IMPORTED_TARGET rlottie)
pkg_check_modules(PLIST REQUIRED IMPORTED_TARGET libplist-2.0)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
pkg_check_modules(TURBOJPEG REQUIRED IMPORTED_TARGET libturbojpeg)
pkg_check_modules(VIPS REQUIRED IMPORTED_TARGET vips)
pkg_check_modules(XXHASH REQUIRED IMPORTED_TARGET libxxhash)
pkg_check_modules(ZIMG REQUIRED IMPORTED_TARGET zimg)

# exifcard_either(<name> [OF_TOOLKIT] SHARED <library…> STATIC <archive…>)
#
# Makes the target exifcard::<name>: the archives for a program that must start quickly (exifcard_quick_start), the
# shared libraries for all others, and for all where an archive is missing. OF_TOOLKIT: the toolkit loads the shared
# ones anyhow, so a program with windows takes them too.
function(exifcard_either name)
    cmake_parse_arguments(PARSE_ARGV 1 either "OF_TOOLKIT" "" "SHARED;STATIC")
    set(archives)
    foreach(archive IN LISTS either_STATIC)
        if(TARGET ${archive})
            list(APPEND archives ${archive})
            continue()
        endif()
        find_library(EXIFCARD_${archive} NAMES ${archive})
        mark_as_advanced(EXIFCARD_${archive})
        list(APPEND archives ${EXIFCARD_${archive}})
    endforeach()
    add_library(exifcard_${name} INTERFACE)
    add_library(exifcard::${name} ALIAS exifcard_${name})
    if("${archives}" MATCHES "NOTFOUND" OR EXIFCARD_SANITIZERS)
        target_link_libraries(exifcard_${name} INTERFACE ${either_SHARED})
        return()
    endif()
    set(isQuick "$<BOOL:$<TARGET_PROPERTY:EXIFCARD_QUICK_START>>")
    if(either_OF_TOOLKIT)
        set(isQuick "$<AND:${isQuick},$<NOT:$<BOOL:$<TARGET_PROPERTY:EXIFCARD_HAS_WINDOWS>>>>")
    endif()
    foreach(library IN LISTS either_SHARED)
        target_link_libraries(exifcard_${name} INTERFACE "$<$<NOT:${isQuick}>:${library}>")
    endforeach()
    foreach(archive IN LISTS archives)
        target_link_libraries(exifcard_${name} INTERFACE "$<${isQuick}:${archive}>")
    endforeach()
endfunction()

if(NOT EXIFCARD_SANITIZERS)
    # The formatting library comes without an archive; here is one, made of its own header.
    add_library(exifcard_fmt_archive STATIC "${CMAKE_CURRENT_LIST_DIR}/FormatLibrary.cpp")
    target_link_libraries(exifcard_fmt_archive PRIVATE fmt::fmt-header-only)
    target_compile_options(exifcard_fmt_archive PRIVATE -fkeep-inline-functions -Wno-stringop-overflow)
endif()

exifcard_either(fmt SHARED fmt::fmt STATIC exifcard_fmt_archive)
# The logging library is headers alone; those ask for the shared formatting library.
add_library(exifcard_spdlog INTERFACE)
add_library(exifcard::spdlog ALIAS exifcard_spdlog)
target_include_directories(exifcard_spdlog SYSTEM INTERFACE
    $<TARGET_PROPERTY:spdlog::spdlog_header_only,INTERFACE_INCLUDE_DIRECTORIES>)
target_compile_definitions(exifcard_spdlog INTERFACE
    $<TARGET_PROPERTY:spdlog::spdlog_header_only,INTERFACE_COMPILE_DEFINITIONS>)
target_link_libraries(exifcard_spdlog INTERFACE exifcard::fmt Threads::Threads)

exifcard_either(icu OF_TOOLKIT SHARED ICU::i18n ICU::uc STATIC libicui18n.a libicuuc.a libicudata.a)
exifcard_either(expat OF_TOOLKIT SHARED PkgConfig::EXPAT STATIC libexpat.a)
exifcard_either(sqlite3 SHARED PkgConfig::SQLITE STATIC libsqlite3.a)
exifcard_either(xxhash SHARED PkgConfig::XXHASH STATIC libxxhash.a)
exifcard_either(zlib OF_TOOLKIT SHARED ZLIB::ZLIB STATIC libz.a)

# exifcard_quick_start(<program> [WINDOWS])
#
# For a program that is started for one photo at a time: each shared library costs it half a millisecond before main,
# so what can be is linked in; and of the window's what holds most names comes first, where the loader finds them
# soonest. WINDOWS: so is one that shows some.
function(exifcard_quick_start program)
    cmake_parse_arguments(PARSE_ARGV 1 quick "WINDOWS" "" "")
    set_target_properties(${program} PROPERTIES EXIFCARD_QUICK_START ON EXIFCARD_HAS_WINDOWS ${quick_WINDOWS})
    if(quick_WINDOWS AND NOT EXIFCARD_SANITIZERS)
        target_link_options(${program} PRIVATE -Wl,--push-state,--no-as-needed $<TARGET_FILE:Qt6::Widgets>
            $<TARGET_FILE:Qt6::Gui> $<TARGET_FILE:Qt6::Core> -lstdc++ -Wl,--pop-state -Wl,-z,pack-relative-relocs)
    elseif(NOT EXIFCARD_SANITIZERS)
        # The modules bring the shared C++ library along; they share interfaces with the program and no exception.
        target_link_options(${program} PRIVATE -static-libstdc++ -static-libgcc -Wl,-z,pack-relative-relocs)
    endif()
endfunction()
