# Every target of ours is compiled with these; a warning is an error.
add_library(kiv_warnings INTERFACE)
if(MSVC)
  target_compile_options(kiv_warnings INTERFACE /W4 /WX /utf-8 /permissive-)
else()
  target_compile_options(kiv_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wcast-qual -Wnull-dereference -Wformat=2
    -Wimplicit-fallthrough $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual>)
  # g++ 12 sees overlaps in std::string that are not there.
  target_compile_options(kiv_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  if(KIV_JOINED)
    # clang says so of names in unnamed namespaces of other files, too.
    target_compile_options(kiv_warnings INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-shadow>)
  endif()
endif()
