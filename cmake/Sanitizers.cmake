option(KIV_SANITIZE "Build with address and undefined-behavior sanitizers" OFF)
option(KIV_SANITIZE_REPORTS "Undefined behavior is described before the program ends; slower" OFF)
if(KIV_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # At random addresses, three million places of the checks would be adjusted at each start of a program.
    add_compile_options(-fno-pie)
    add_link_options(-no-pie)
    if(NOT KIV_SANITIZE_REPORTS)
      # What describes each place, 60 MB, would be guarded again at each start of a program. The one check that cannot
      # trap, the one of virtual tables, is left to the fuzz targets.
      add_compile_options(-fsanitize-undefined-trap-on-error -fno-sanitize=vptr)
    endif()
  endif()
endif()

# The fuzz targets and everything that they call.
option(KIV_FUZZ "Build the fuzz targets; needs clang" OFF)
option(KIV_FUZZ_FAST "More runs of the fuzz targets in the same time, with fewer checks" OFF)
if(KIV_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "The fuzz targets need clang: cmake --preset fuzz")
  endif()
  if(KIV_FUZZ_FAST)
    # Comparisons that the fuzzer does not see cost nothing.
    set(fuzz_flags -fsanitize=fuzzer-no-link,address -fno-sanitize-coverage=trace-cmp)
    add_link_options(-fsanitize=address)
  else()
    set(fuzz_flags -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
    add_link_options(-fsanitize=address,undefined)
  endif()
  add_compile_options(${fuzz_flags} -fno-omit-frame-pointer)
  # The library's own checks see an index that leaves its array and stays in the same object.
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
