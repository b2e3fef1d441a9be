# The libraries around the programs are header-only and come from the build machine, whatever it builds for. They are
# linked into a folder of their own: the other headers there must not reach a cross build.
find_path(CLI11_INCLUDE CLI/CLI.hpp PATHS /usr/include REQUIRED NO_CMAKE_FIND_ROOT_PATH)
find_path(NLOHMANN_INCLUDE nlohmann/json.hpp PATHS /usr/include REQUIRED NO_CMAKE_FIND_ROOT_PATH)
set(headers ${PROJECT_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${headers})
file(CREATE_LINK ${CLI11_INCLUDE}/CLI ${headers}/CLI COPY_ON_ERROR SYMBOLIC)
file(CREATE_LINK ${NLOHMANN_INCLUDE}/nlohmann ${headers}/nlohmann COPY_ON_ERROR SYMBOLIC)

add_library(kiv_headers INTERFACE)
target_include_directories(kiv_headers SYSTEM INTERFACE ${headers})
