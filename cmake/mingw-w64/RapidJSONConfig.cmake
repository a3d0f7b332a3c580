# RapidJSON for the Windows cross build. The headers are the build
# machine's, reached through a directory that holds only them: the host's
# whole include directory must never be searched, or its C headers would
# shadow MinGW's.

find_path(VXUTILITY_HOST_RAPIDJSON_INCLUDE_DIR rapidjson/rapidjson.h
  PATHS /usr/include /usr/local/include
  NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
if(NOT VXUTILITY_HOST_RAPIDJSON_INCLUDE_DIR)
  set(RapidJSON_FOUND FALSE)
  set(RapidJSON_NOT_FOUND_MESSAGE "rapidjson/rapidjson.h not found on the build machine (rapidjson-dev)")
  return()
endif()

set(_vx_rapidjson_dir ${CMAKE_BINARY_DIR}/mingw-w64-deps/include)
file(MAKE_DIRECTORY ${_vx_rapidjson_dir})
if(NOT EXISTS ${_vx_rapidjson_dir}/rapidjson)
  file(CREATE_LINK ${VXUTILITY_HOST_RAPIDJSON_INCLUDE_DIR}/rapidjson ${_vx_rapidjson_dir}/rapidjson SYMBOLIC)
endif()
set(RAPIDJSON_INCLUDE_DIRS ${_vx_rapidjson_dir})
set(RapidJSON_INCLUDE_DIRS ${_vx_rapidjson_dir})
set(RapidJSON_FOUND TRUE)
