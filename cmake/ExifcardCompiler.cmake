# The flags that every target of this project shares, as one interface target.

find_program(EXIFCARD_CCACHE ccache)
if(EXIFCARD_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${EXIFCARD_CCACHE}")
endif()

add_library(exifcard_compiler INTERFACE)
target_compile_features(exifcard_compiler INTERFACE cxx_std_20)
target_compile_options(exifcard_compiler INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -fvisibility=hidden -ffunction-sections -fdata-sections)
# GCC 12 takes the members of a variant for uninitialized wherever it inlines its destructor.
target_compile_options(exifcard_compiler INTERFACE
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-maybe-uninitialized>)
target_link_options(exifcard_compiler INTERFACE -Wl,--gc-sections -Wl,--as-needed)
# GCC takes a variant's alternatives that are not held for uninitialized reads when it optimizes.
target_compile_options(exifcard_compiler INTERFACE
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-maybe-uninitialized>)
if(EXIFCARD_WARNINGS_AS_ERRORS)
    target_compile_options(exifcard_compiler INTERFACE -Werror)
endif()
if(EXIFCARD_SANITIZERS)
    target_compile_options(exifcard_compiler INTERFACE
        -fsanitize=${EXIFCARD_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(exifcard_compiler INTERFACE -fsanitize=${EXIFCARD_SANITIZERS})
    # A hundred tests with the sanitizers inside are linked in half the time.
    find_program(EXIFCARD_GOLD ld.gold)
    if(EXIFCARD_GOLD)
        target_link_options(exifcard_compiler INTERFACE -fuse-ld=gold)
    endif()
endif()
