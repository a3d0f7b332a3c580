# Installs the build into a fresh prefix, builds the consumer project against
# it with find_package, runs it, and checks the pkg-config file.

file(REMOVE_RECURSE ${WORK_DIR})
set(PREFIX ${WORK_DIR}/prefix)

function(run_step)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "step failed (${result}): ${ARGN}\n${out}\n${err}")
  endif()
  set(STEP_OUTPUT "${out}" PARENT_SCOPE)
endfunction()

run_step(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX})
foreach(required include/vxutility/vxutility.h include/vxutility/vxutility_export.h
                 include/vxbase/vxbase.h include/vxbase/vxbase_export.h)
  if(NOT EXISTS ${PREFIX}/${required})
    message(FATAL_ERROR "not installed: ${required}")
  endif()
endforeach()
file(GLOB_RECURSE config_files ${PREFIX}/*/vxutilityConfig.cmake ${PREFIX}/*/vxutilityConfigVersion.cmake
                               ${PREFIX}/*/vxutility.pc)
list(LENGTH config_files found)
if(NOT found EQUAL 3)
  message(FATAL_ERROR "package files missing, found: ${config_files}")
endif()

# A cross build's consumer is built with the same toolchain and run with the
# same emulator. Its toolchain searches only the target's own tree, so it is
# pointed at the package directly.
set(consumer_options -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_BUILD_TYPE=Release)
if(TOOLCHAIN_FILE)
  file(GLOB_RECURSE package_file ${PREFIX}/*/vxutilityConfig.cmake)
  get_filename_component(package_dir "${package_file}" DIRECTORY)
  list(APPEND consumer_options -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN_FILE} -Dvxutility_DIR=${package_dir})
endif()
run_step(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build ${consumer_options})
run_step(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
# Windows finds a program's DLLs beside it, as a consumer ships them.
file(GLOB installed_dlls ${PREFIX}/bin/*.dll)
if(installed_dlls)
  file(COPY ${installed_dlls} DESTINATION ${WORK_DIR}/build)
endif()
file(GLOB app ${WORK_DIR}/build/app ${WORK_DIR}/build/app.exe)
run_step(${EMULATOR} ${app})
string(STRIP "${STEP_OUTPUT}" printed)
if(NOT printed STREQUAL EXPECTED_VERSION)
  message(FATAL_ERROR "consumer printed '${printed}', expected '${EXPECTED_VERSION}'")
endif()

find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  file(GLOB_RECURSE pc_file ${PREFIX}/*/vxutility.pc)
  get_filename_component(pc_dir ${pc_file} DIRECTORY)
  set(ENV{PKG_CONFIG_PATH} ${pc_dir})
  run_step(${PKG_CONFIG} --modversion vxutility)
  string(STRIP "${STEP_OUTPUT}" pc_version)
  if(NOT pc_version STREQUAL "5.0.23")
    message(FATAL_ERROR "pkg-config reports '${pc_version}'")
  endif()
endif()
message(STATUS "consumer printed ${printed}")
