# What `cmake --install` lays down: libraries, headers, a CMake package, pkg-config files, the tool
# with its man page and completion (tools/CMakeLists.txt), data and guides. Everything finds its
# neighbours by relative paths, so that a tree may be installed to, or moved to, any prefix.
include(CMakePackageConfigHelpers)

# Headers include one another as "zvsdk_types.h" and "support/zcsl_vector.h", so they get a folder.
set(ZVSDK_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/zvsdk)
set(ZVSDK_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/zvsdk)
set(ZVSDK_INSTALL_PKGCONFIGDIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set_target_properties(zvsdk_playlist PROPERTIES EXPORT_NAME playlist INSTALL_RPATH "$ORIGIN")
set_target_properties(zvsdk_manager PROPERTIES EXPORT_NAME manager)
set_target_properties(zvsdk_headers PROPERTIES EXPORT_NAME headers)

install(TARGETS zvsdk_playlist zvsdk_manager zvsdk_headers EXPORT zvsdk_targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${ZVSDK_INSTALL_INCLUDEDIR})
install(DIRECTORY include/ DESTINATION ${ZVSDK_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
# The headers of the support library that a C program can use; the others are its own business.
set(ZVSDK_SUPPORT_HEADERS
    accum atomic error fs fuzzy hashmap hashtable lrumap module random sort stack string stringmap
    stringtable thread time vector vector2)
list(TRANSFORM ZVSDK_SUPPORT_HEADERS REPLACE "(.+)" "support/zcsl_\\1.h")
install(FILES ${ZVSDK_SUPPORT_HEADERS} DESTINATION ${ZVSDK_INSTALL_INCLUDEDIR}/support)
install(DIRECTORY data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/zvsdk PATTERN "*.py" EXCLUDE
        PATTERN "__pycache__" EXCLUDE)
# Side by side as here, so that their links hold.
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES data/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR}/data)

install(EXPORT zvsdk_targets NAMESPACE zvsdk:: DESTINATION ${ZVSDK_INSTALL_CMAKEDIR})
file(WRITE ${PROJECT_BINARY_DIR}/zvsdkConfig.cmake
     "include(\"\${CMAKE_CURRENT_LIST_DIR}/zvsdk_targets.cmake\")\n")
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zvsdkConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zvsdkConfig.cmake ${PROJECT_BINARY_DIR}/zvsdkConfigVersion.cmake
        DESTINATION ${ZVSDK_INSTALL_CMAKEDIR})

file(RELATIVE_PATH ZVSDK_PREFIX_FROM_PKGCONFIG /prefix/${ZVSDK_INSTALL_PKGCONFIGDIR} /prefix)
string(REGEX REPLACE "/$" "" ZVSDK_PREFIX_FROM_PKGCONFIG ${ZVSDK_PREFIX_FROM_PKGCONFIG})
foreach(library zvsdk_playlist zvsdk_manager)
  configure_file(cmake/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${ZVSDK_INSTALL_PKGCONFIGDIR})
endforeach()
