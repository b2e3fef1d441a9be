# Hardening of the delivered programs: randomized addresses, no memory that is both writable and executable, stack
# protectors, control-flow protection, and checked calls of the C library.
if(MSVC OR NOT CMAKE_BUILD_TYPE STREQUAL "Release")
  return()
endif()
add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|amd64")
  add_compile_options(-fcf-protection)
endif()
if(MINGW)
  # The first one links the library of the stack protector.
  add_link_options(-fstack-protector-strong -Wl,--dynamicbase,--high-entropy-va,--nxcompat)
elseif(UNIX AND NOT APPLE)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  include(CheckPIESupported)
  check_pie_supported()
  add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
endif()
