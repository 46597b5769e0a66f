# What every target shares: warnings, sanitizers, and the two ways of making a piece of the product.

add_library(zvsdk_headers INTERFACE)
target_include_directories(zvsdk_headers INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)

add_library(zvsdk_options INTERFACE)
target_compile_options(zvsdk_options INTERFACE -Wall -Wextra -Wshadow)
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

# A test program: every source of the current folder against the given libraries.
function(zvsdk_add_test_program name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cc)
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE zvsdk_options ${ARGN} GTest::gtest GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
