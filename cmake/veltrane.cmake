# How every target of the project is compiled, and one function a kind of target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
if(WIN32)
    # The host is a library that the plug-in loads beside it: MinGW then exports all that it has.
    set(CMAKE_SHARED_LIBRARY_PREFIX "")
    add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
    # This compiler keeps no more than 16 bytes of the stack aligned, and takes 32 for granted.
    add_compile_options(-Wa,-muse-unaligned-vector-move)
endif()

add_library(veltrane_flags INTERFACE)
target_compile_options(veltrane_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # A false alarm where several files are compiled as one: a class made of a file's own names.
    target_compile_options(veltrane_flags INTERFACE -Wno-subobject-linkage)
endif()
if(CMAKE_BUILD_TYPE STREQUAL Release)
    # The hot loops are written for the vectoriser, which -O2 alone starts too timidly.
    target_compile_options(veltrane_flags INTERFACE
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:VELTRANE_IS_TEST>>>:-O3>)
endif()
if(VELTRANE_SANITIZE)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_compile_options(${sanitizers})
    add_link_options(${sanitizers})
endif()
if(VELTRANE_FUZZ_COVERAGE)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# veltrane_sources(VARIABLE FOLDER): the folder's .cpp files that this system compiles: *_win32.cpp
# and those in win32/ on Windows only, *_posix.cpp elsewhere only.
function(veltrane_sources variable folder)
    file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
    if(WIN32)
        file(GLOB more CONFIGURE_DEPENDS ${folder}/win32/*.cpp)
        list(APPEND sources ${more})
        list(FILTER sources EXCLUDE REGEX "_posix(_test)?\\.cpp$")
    else()
        list(FILTER sources EXCLUDE REGEX "_win32(_test)?\\.cpp$")
    endif()
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# veltrane_library(NAME LIBRARY...): the library of the folder that calls it, from all its .cpp
# files; static, unless VELTRANE_LIBRARY_KIND says otherwise. Includes are written from the project's
# root.
function(veltrane_library name)
    veltrane_sources(sources ${CMAKE_CURRENT_SOURCE_DIR})
    if(NOT VELTRANE_LIBRARY_KIND)
        set(VELTRANE_LIBRARY_KIND STATIC)
    endif()
    add_library(${name} ${VELTRANE_LIBRARY_KIND} ${sources})
    target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
    target_link_libraries(${name} PUBLIC ${ARGN} PRIVATE $<BUILD_INTERFACE:veltrane_flags>)
endfunction()

# Where tests find the project's files. A program that Wine runs sees this machine's root as a drive.
set(veltrane_source_dir ${PROJECT_SOURCE_DIR})
if(CMAKE_CROSSCOMPILING)
    set(veltrane_source_dir Z:${PROJECT_SOURCE_DIR})
endif()

# veltrane_test(FOLDER LIBRARY...): test_FOLDER from tests/FOLDER/*.cpp, run by CTest as one test a
# GoogleTest suite member; in the builds of the whole check, where starting a program for each takes
# longer than the tests, in as many parts as there are processors.
function(veltrane_test folder)
    if(NOT VELTRANE_BUILD_UNIT_TESTS)
        return()
    endif()
    veltrane_sources(sources ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
    add_executable(test_${folder} ${sources})
    target_include_directories(test_${folder} PRIVATE ${PROJECT_SOURCE_DIR})
    target_compile_definitions(test_${folder} PRIVATE VELTRANE_SOURCE_DIR="${veltrane_source_dir}")
    target_link_libraries(test_${folder} PRIVATE ${ARGN} GTest::gmock_main veltrane_flags)
    # It takes far longer to compile tests than to run them, most of it for templates that every
    # file needs again: many files are compiled as one, a tenth of the time. An object file of
    # Windows has no place for the sections of that many.
    set(together 24)
    if(WIN32)
        target_compile_options(test_${folder} PRIVATE -Wa,-mbig-obj)
    endif()
    set_target_properties(test_${folder} PROPERTIES VELTRANE_IS_TEST ON
        UNITY_BUILD ${VELTRANE_TESTS_TOGETHER} UNITY_BUILD_BATCH_SIZE ${together})
    if(CMAKE_CROSSCOMPILING)
        set_target_properties(test_${folder} PROPERTIES
            RULE_LAUNCH_LINK ${PROJECT_SOURCE_DIR}/scripts/link-with-lld)
    endif()
    # One for all: it takes as long to make as ten files of tests to compile.
    if(folder STREQUAL psdfile)
        target_precompile_headers(test_psdfile PRIVATE <gmock/gmock.h>)
    else()
        target_precompile_headers(test_${folder} REUSE_FROM test_psdfile)
    endif()
    target_compile_options(test_${folder} PRIVATE -O0)
    if(CMAKE_UNITY_BUILD)
        cmake_host_system_information(RESULT count QUERY NUMBER_OF_LOGICAL_CORES)
        foreach(part RANGE 1 ${count})
            math(EXPR index "${part} - 1")
            add_test(NAME ${folder}:${part} COMMAND test_${folder} --gtest_brief=1)
            set_tests_properties(${folder}:${part} PROPERTIES ENVIRONMENT
                "GTEST_TOTAL_SHARDS=${count};GTEST_SHARD_INDEX=${index}")
        endforeach()
    else()
        gtest_discover_tests(test_${folder} DISCOVERY_TIMEOUT 60 TEST_PREFIX ${folder}:)
    endif()
endfunction()
