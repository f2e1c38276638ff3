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
pkg_check_modules(PLIST REQUIRED IMPORTED_TARGET libplist-2.0)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
pkg_check_modules(TURBOJPEG REQUIRED IMPORTED_TARGET libturbojpeg)
pkg_check_modules(VIPS REQUIRED IMPORTED_TARGET vips)
pkg_check_modules(ZIMG REQUIRED IMPORTED_TARGET zimg)

# exifcard_use_mimalloc(<program>)
#
# Links the program with the mimalloc allocator in place of the C library's, where that is wanted.
function(exifcard_use_mimalloc program)
    if(EXIFCARD_USE_MIMALLOC AND NOT EXIFCARD_SANITIZERS)
        find_package(mimalloc REQUIRED)
        # Nothing names a function of it: the linker would drop it as unneeded.
        target_link_options(${program} PRIVATE -Wl,--push-state,--no-as-needed -lmimalloc -Wl,--pop-state)
    endif()
endfunction()
