# How every target of the project is compiled, and one function a kind of target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

add_library(veltrane_flags INTERFACE)
target_compile_options(veltrane_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast -Werror)
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

# veltrane_library(NAME LIBRARY...): the static library of the folder that calls it, from all its
# .cpp files. Includes are written from the project's root.
function(veltrane_library name)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
    target_link_libraries(${name} PUBLIC ${ARGN} PRIVATE $<BUILD_INTERFACE:veltrane_flags>)
endfunction()

# veltrane_test(FOLDER LIBRARY...): test_FOLDER from tests/FOLDER/*.cpp, run by CTest as one test a
# GoogleTest suite member.
function(veltrane_test folder)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    add_executable(test_${folder} ${sources})
    target_include_directories(test_${folder} PRIVATE ${PROJECT_SOURCE_DIR})
    target_compile_definitions(test_${folder} PRIVATE
        VELTRANE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    target_link_libraries(test_${folder} PRIVATE ${ARGN} GTest::gmock_main veltrane_flags)
    # It takes far longer to compile tests than to run them. The header is compiled ahead in one of
    # the two builds only, so that the other finds an include that is missing.
    set_target_properties(test_${folder} PROPERTIES VELTRANE_IS_TEST ON)
    target_compile_options(test_${folder} PRIVATE -O0)
    if(VELTRANE_SANITIZE)
        target_precompile_headers(test_${folder} PRIVATE <gmock/gmock.h>)
    endif()
    gtest_discover_tests(test_${folder} DISCOVERY_TIMEOUT 60 TEST_PREFIX ${folder}:)
endfunction()
