# Warnings and sanitizer flags shared by every target of the project.

function(vxutility_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
endfunction()

if(VXUTILITY_SANITIZE)
  set(_vx_san_flags -fsanitize=${VXUTILITY_SANITIZE} -fno-omit-frame-pointer -g)
  if(VXUTILITY_SANITIZE MATCHES "undefined")
    # GCC leaves float-to-int overflow out of 'undefined'; a float must never
    # reach an integer conversion out of range, so catch it too.
    list(APPEND _vx_san_flags -fsanitize=float-cast-overflow -fno-sanitize-recover=all)
  endif()
  if(VXUTILITY_SANITIZE MATCHES "undefined" AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # Loads of an enumeration outside its values (clang only).
    list(APPEND _vx_san_flags -fsanitize=enum)
  endif()
  add_compile_options(${_vx_san_flags})
  add_link_options(${_vx_san_flags})
endif()

if(VXUTILITY_FUZZ)
  # Instrument the library itself for coverage, not only the fuzz harnesses.
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined,enum -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=address,undefined)
endif()
