# Installs the libraries below WORK_DIR, configures the project beside this file against them,
# builds it, runs it and looks at the document. Anything that fails ends the script with an error.
#
# cmake -DBUILD_DIR=... -DWORK_DIR=... -DCXX=... -DCXX_FLAGS=... -DBUILD_TYPE=... -P this

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(prefix ${WORK_DIR}/prefix)
set(project ${WORK_DIR}/build)
file(REMOVE_RECURSE ${prefix} ${project})

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix} --component development)

# No compiler option of our own build may reach those who link with it.
file(GLOB_RECURSE exports ${prefix}/*veltraneTargets*.cmake)
if(NOT exports)
    message(FATAL_ERROR "nothing is exported")
endif()
foreach(export ${exports})
    file(READ ${export} text)
    if(text MATCHES "veltrane_flags|-Werror")
        message(FATAL_ERROR "${export} has the flags of our own build")
    endif()
endforeach()

run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${project} -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS} -DCMAKE_BUILD_TYPE=${BUILD_TYPE})
run(${CMAKE_COMMAND} --build ${project} --config ${BUILD_TYPE})

set(document ${WORK_DIR}/document.psd)
file(REMOVE ${document})
run(${project}/write_document ${document})
file(READ ${document} bytes HEX)
# Signature, version 1, reserved bytes, 3 channels, 48 rows, 64 columns, 8 bits, RGB.
if(NOT bytes MATCHES "^3842505300010000000000000003000000300000004000080003")
    message(FATAL_ERROR "a wrong header: ${bytes}")
endif()
foreach(name ramp flat set "</Layer set>")
    string(HEX ${name} name_bytes)
    if(NOT bytes MATCHES "${name_bytes}")
        message(FATAL_ERROR "the document has no layer ${name}")
    endif()
endforeach()
