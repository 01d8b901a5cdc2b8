# The libraries that programs other than veltrane's own build on: after `cmake --install BUILD
# --component development`, `find_package(veltrane)` gives veltrane::psdfile and
# veltrane::psdbuilder.

include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(veltrane_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/veltrane)

# veltrane_install(NAME): the library of the folder that calls it, with the folder's headers. Their
# includes begin with the folder's name, so the folder above is what goes on the include path.
function(veltrane_install name)
    set(headers ${CMAKE_INSTALL_INCLUDEDIR}/veltrane)
    add_library(veltrane::${name} ALIAS ${name})
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_include_directories(${name} INTERFACE $<INSTALL_INTERFACE:${headers}>)
    install(TARGETS ${name} EXPORT veltraneTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
    install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/ DESTINATION ${headers}/${name}
        COMPONENT development FILES_MATCHING PATTERN "*.h")
endfunction()

install(EXPORT veltraneTargets NAMESPACE veltrane:: DESTINATION ${veltrane_package_dir}
    COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/veltraneConfig.cmake.in
    ${PROJECT_BINARY_DIR}/veltraneConfig.cmake INSTALL_DESTINATION ${veltrane_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/veltraneConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/veltraneConfig.cmake
    ${PROJECT_BINARY_DIR}/veltraneConfigVersion.cmake
    DESTINATION ${veltrane_package_dir} COMPONENT development)
