# The libraries around the programs; the core has none. CLI11 and nlohmann/json are header-only.
add_library(kiv_headers INTERFACE)
if(NOT CMAKE_CROSSCOMPILING)
  find_package(CLI11 CONFIG REQUIRED)
  find_package(nlohmann_json CONFIG REQUIRED)
  target_link_libraries(kiv_headers INTERFACE CLI11::CLI11 nlohmann_json::nlohmann_json)
  return()
endif()

# A cross build uses the packages of the build machine. It must see these two, and no other header that lies beside
# them, so they are linked into a folder of their own.
find_path(CLI11_INCLUDE CLI/CLI.hpp PATHS /usr/include REQUIRED NO_CMAKE_FIND_ROOT_PATH)
find_path(NLOHMANN_INCLUDE nlohmann/json.hpp PATHS /usr/include REQUIRED NO_CMAKE_FIND_ROOT_PATH)
set(headers ${PROJECT_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${headers})
file(CREATE_LINK ${CLI11_INCLUDE}/CLI ${headers}/CLI COPY_ON_ERROR SYMBOLIC)
file(CREATE_LINK ${NLOHMANN_INCLUDE}/nlohmann ${headers}/nlohmann COPY_ON_ERROR SYMBOLIC)
target_include_directories(kiv_headers SYSTEM INTERFACE ${headers})
