# What every target is compiled with. The same bits of floating point everywhere: no contraction, no fast-math, no
# instructions of one machine only.
add_library(tessary_flags INTERFACE)
target_compile_options(tessary_flags INTERFACE -ffp-contract=off)
# A program loads only the libraries that it calls.
target_link_options(tessary_flags INTERFACE -Wl,--as-needed)
# Warnings are a matter of the compiler that builds the program; clang only builds the fuzzers.
# g++ 12 sees an overlap in `"text" + std::string` that is none (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(TESSARY_WARNINGS -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -Wno-restrict)
    # A target with generated sources sets TESSARY_GENERATES and gives the warnings to its own sources.
    target_compile_options(tessary_flags INTERFACE
                           "$<$<NOT:$<BOOL:$<TARGET_PROPERTY:TESSARY_GENERATES>>>:${TESSARY_WARNINGS}>")
endif()
if(TESSARY_SANITIZE)
    target_compile_options(tessary_flags INTERFACE -fsanitize=${TESSARY_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
    target_link_options(tessary_flags INTERFACE -fsanitize=${TESSARY_SANITIZE})
endif()

# One library for each folder of src/, linked to the layers below it and to nothing else.
function(tessary_layer name)
    cmake_parse_arguments(LAYER "" "" "ON;USES" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    if(name STREQUAL "platform")
        list(FILTER sources EXCLUDE REGEX "/adapters/")
    endif()
    string(REPLACE "/" "_" target tessary_${name})
    add_library(${target} STATIC ${sources})
    target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${target} PUBLIC tessary_flags ${LAYER_ON} PRIVATE ${LAYER_USES})
endfunction()
