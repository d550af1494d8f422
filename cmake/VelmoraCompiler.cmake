# Compiler requirements, warnings and instrumentation, as one interface target `velmora_flags`.

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    message(FATAL_ERROR
        "g++ ${CMAKE_CXX_COMPILER_VERSION} compiles some C++20 coroutines wrongly without saying so "
        "(a co_await inside a condition, for one). Use clang++-19, which Debian 12 has, or g++ 13 or later.")
endif()

option(VELMORA_WERROR "Treat warnings as errors" OFF)
option(VELMORA_ASSERTIONS "Check the standard library's preconditions" OFF)
option(VELMORA_COVERAGE "Instrument for line coverage" OFF)
set(VELMORA_SANITIZE "" CACHE STRING "Sanitizers, comma separated")

add_library(velmora_flags INTERFACE)
target_compile_features(velmora_flags INTERFACE cxx_std_20)
target_compile_options(velmora_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2 -Wextra-semi
    $<$<BOOL:${VELMORA_WERROR}>:-Werror>)
# So that the same precompiled header is the same file, which a compiler cache can recognise.
target_compile_options(velmora_flags INTERFACE
    $<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>)
target_compile_definitions(velmora_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_URL_CAST_FROM_STRING
    $<$<BOOL:${VELMORA_ASSERTIONS}>:_GLIBCXX_ASSERTIONS>
    $<$<CONFIG:Release>:QT_NO_DEBUG_OUTPUT>)
# As Debian builds: a network client gets its calls and its stack checked, and its tables read-only. Libraries that
# the program does not call are not linked.
target_compile_options(velmora_flags INTERFACE
    $<$<CONFIG:Release>:-fstack-protector-strong;-fstack-clash-protection;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
target_link_options(velmora_flags INTERFACE -Wl,-z,relro,-z,now,--as-needed)
# An instrumented program is slower: tests wait so many times as long before they give up.
set(VELMORA_PATIENCE 1)
if(VELMORA_SANITIZE)
    set(VELMORA_PATIENCE 6)
    target_compile_options(velmora_flags INTERFACE
        -fsanitize=${VELMORA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(velmora_flags INTERFACE -fsanitize=${VELMORA_SANITIZE})
endif()
if(VELMORA_COVERAGE)
    target_compile_options(velmora_flags INTERFACE -fprofile-instr-generate -fcoverage-mapping)
    target_link_options(velmora_flags INTERFACE -fprofile-instr-generate)
endif()
