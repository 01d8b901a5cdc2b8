# nlohmann_json::nlohmann_json, headers only.
if(CMAKE_CROSSCOMPILING)
    # Among the headers of scripts/build-windows-libraries.
    if(NOT TARGET nlohmann_json::nlohmann_json)
        add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED GLOBAL)
        target_include_directories(nlohmann_json::nlohmann_json
            INTERFACE ${VELTRANE_WINDOWS_LIBRARIES}/include)
    endif()
else()
    find_package(nlohmann_json REQUIRED)
endif()
