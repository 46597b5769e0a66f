# What every target shares: warnings, sanitizers, and the two ways of making a piece of the product.

add_library(zvsdk_headers INTERFACE)
target_include_directories(zvsdk_headers INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)

add_library(zvsdk_options INTERFACE)
target_compile_options(zvsdk_options INTERFACE -Wall -Wextra -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # A false alarm of this compiler about std::string's own insert and append.
  target_compile_options(zvsdk_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(ZVSDK_SANITIZE)
  target_compile_options(zvsdk_options INTERFACE
    -fsanitize=${ZVSDK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zvsdk_options INTERFACE -fsanitize=${ZVSDK_SANITIZE})
endif()

# One floor of the playlist library: every source of the current folder, as an object library whose
# includes are resolved from the root of the tree ("support/zcsl_vector.h").
function(zvsdk_add_floor name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cc)
  add_library(${name} OBJECT ${sources})
  target_link_libraries(${name} PUBLIC zvsdk_headers PRIVATE zvsdk_options)
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_compile_options(${name} PRIVATE -fno-exceptions -fno-rtti)
  set_property(GLOBAL APPEND PROPERTY ZVSDK_FLOORS ${name})
endfunction()

# A test program: every source of the current folder against the given libraries. A folder may set
# ZVSDK_TEST_LABELS before; the label "threads" marks what is worth a run under ThreadSanitizer.
function(zvsdk_add_test_program name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cc)
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE zvsdk_options ${ARGN} GTest::gtest GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
                       PROPERTIES TIMEOUT 300 LABELS "${ZVSDK_TEST_LABELS}")
endfunction()

# The date of the build as an object library, written anew whenever one of the objects has changed.
function(zvsdk_add_build_date name objects)
  set(source ${PROJECT_BINARY_DIR}/playlist_build_date.cc)
  set(script ${PROJECT_SOURCE_DIR}/cmake/build_date.cmake)
  add_custom_command(OUTPUT ${source}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${source} -P ${script}
    DEPENDS ${objects} ${script}
    COMMENT "Writing the date of the build" VERBATIM)
  add_library(${name} OBJECT ${source})
  target_link_libraries(${name} PRIVATE zvsdk_options)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
endfunction()

# The playlist library, made of every floor, and the same objects as an archive for tests of insides.
function(zvsdk_add_playlist_library)
  get_property(floors GLOBAL PROPERTY ZVSDK_FLOORS)
  set(objects)
  foreach(floor ${floors})
    list(APPEND objects $<TARGET_OBJECTS:${floor}>)
  endforeach()
  zvsdk_add_build_date(build_date_object "${objects}")
  list(APPEND objects $<TARGET_OBJECTS:build_date_object>)

  add_library(zvsdk_playlist SHARED ${objects})
  target_link_libraries(zvsdk_playlist PUBLIC zvsdk_headers zvsdk_manager PRIVATE zvsdk_options)
  target_link_options(zvsdk_playlist PRIVATE
    -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/zvsdk_playlist.map)
  set_target_properties(zvsdk_playlist PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINKER_LANGUAGE CXX
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/zvsdk_playlist.map)

  add_library(zvsdk_playlist_insides STATIC EXCLUDE_FROM_ALL ${objects})
  target_link_libraries(zvsdk_playlist_insides PUBLIC zvsdk_headers zvsdk_manager
                        PRIVATE zvsdk_options)
  target_include_directories(zvsdk_playlist_insides PUBLIC ${PROJECT_SOURCE_DIR})
  set_target_properties(zvsdk_playlist_insides PROPERTIES LINKER_LANGUAGE CXX)
endfunction()
