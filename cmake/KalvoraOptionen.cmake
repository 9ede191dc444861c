# Options, language level and flags that hold for every target.

set(KALVORA_QT "AUTO" CACHE STRING "Windows with Qt 6: AUTO (when found), ON (demanded), OFF")
set_property(CACHE KALVORA_QT PROPERTY STRINGS AUTO ON OFF)
option(KALVORA_WERROR "Warnings are errors" OFF)
option(KALVORA_SANITIZER "Build with address and undefined behaviour sanitizers" OFF)
option(KALVORA_FUZZ "Build the libFuzzer targets only (clang)" OFF)
option(KALVORA_TESTS "Build the tests" ON)
option(KALVORA_BENCH "Build the benchmarks when their libraries are found" ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_package(Threads REQUIRED)

# A cache of compilations is used when it is there; nobody has to have it.
find_program(KALVORA_CCACHE ccache)
if(KALVORA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${KALVORA_CCACHE}")
endif()

# Short debug information: enough for a readable stack, small enough to deliver.
set(CMAKE_CXX_FLAGS_RELEASE "-O3 -g1 -DNDEBUG")

add_library(kalvora_flags INTERFACE)
target_include_directories(kalvora_flags INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_options(kalvora_flags INTERFACE
    -finput-charset=UTF-8 -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion)
if(KALVORA_WERROR)
    target_compile_options(kalvora_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # What g++ 12 reports here on joined strings lies in its own library and is not so; the others
    # depend on what the optimiser happens to see and must not stop a build.
    target_compile_options(kalvora_flags INTERFACE
        -Wno-restrict -Wno-error=maybe-uninitialized -Wno-error=array-bounds
        -Wno-error=stringop-overflow -Wno-error=stringop-overread)
endif()

set(KALVORA_SANITIZER_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
if(KALVORA_SANITIZER)
    target_compile_options(kalvora_flags INTERFACE ${KALVORA_SANITIZER_FLAGS} -O1 -g)
    target_link_options(kalvora_flags INTERFACE ${KALVORA_SANITIZER_FLAGS})
endif()
if(KALVORA_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "KALVORA_FUZZ needs clang++ (preset fuzz, or make fuzz)")
    endif()
    target_compile_options(kalvora_flags INTERFACE ${KALVORA_SANITIZER_FLAGS} -fsanitize=fuzzer-no-link -O1 -g)
    target_link_options(kalvora_flags INTERFACE ${KALVORA_SANITIZER_FLAGS})
endif()
