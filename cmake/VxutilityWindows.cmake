# Windows conventions for the build (included on WIN32 before any target).

# The libraries are vxbase.dll and vxutility.dll, the names callers load.
set(CMAKE_SHARED_LIBRARY_PREFIX "")
set(CMAKE_SHARED_MODULE_PREFIX "")

# Windows finds a program's DLLs beside it: every program and DLL of the
# build goes to one directory, so tests and tools run without a search path.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# With MinGW, the C++ runtime, the unwinder and the threads library are DLLs
# too. They go beside the programs and are installed with the libraries, so
# both libraries and the caller share one copy of each.
if(MINGW)
  set(VXUTILITY_MINGW_RUNTIME_DLLS)
  foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
      OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${found}" OR NOT EXISTS "${found}")
      message(FATAL_ERROR "MinGW runtime ${dll} not found")
    endif()
    list(APPEND VXUTILITY_MINGW_RUNTIME_DLLS ${found})
  endforeach()
  file(COPY ${VXUTILITY_MINGW_RUNTIME_DLLS} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  install(FILES ${VXUTILITY_MINGW_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
