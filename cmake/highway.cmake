# hwy::hwy, the library of Highway; Debian's has a CMake package, its own sources don't make one.
if(CMAKE_CROSSCOMPILING)
    find_path(HWY_INCLUDE_DIR hwy/highway.h REQUIRED)
    find_library(HWY_LIBRARY hwy REQUIRED)
    if(NOT TARGET hwy::hwy)
        add_library(hwy::hwy UNKNOWN IMPORTED GLOBAL)
        set_target_properties(hwy::hwy PROPERTIES IMPORTED_LOCATION ${HWY_LIBRARY}
            INTERFACE_INCLUDE_DIRECTORIES ${HWY_INCLUDE_DIR})
    endif()
else()
    find_package(HWY REQUIRED)
endif()
