# A relocatable prefix: the library with its headers and its CMake package, the plug-in, zentcheck, and the documents.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

install(TARGETS zent_nodes EXPORT ZentMayaNodesTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
set_target_properties(zent_nodes PROPERTIES EXPORT_NAME nodes)
install(EXPORT ZentMayaNodesTargets NAMESPACE zent:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZentMayaNodes)
configure_package_config_file(cmake/ZentMayaNodesConfig.cmake.in ZentMayaNodesConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZentMayaNodes)
write_basic_package_version_file(ZentMayaNodesConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/ZentMayaNodesConfig.cmake ${CMAKE_BINARY_DIR}/ZentMayaNodesConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZentMayaNodes)

foreach(room IN ITEMS math geometry nodes expression)
    install(DIRECTORY src/zent/${room} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zent FILES_MATCHING PATTERN "*.h"
            PATTERN lanes.h EXCLUDE PATTERN require.h EXCLUDE PATTERN recurrence.h EXCLUDE PATTERN closestSearch.h EXCLUDE
            PATTERN skinBlock.h EXCLUDE PATTERN processor.h EXCLUDE PATTERN fusedArithmetic.h EXCLUDE)
endforeach()

configure_file(cmake/version.h.in include/zent/version.h @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/include/zent/version.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zent)
file(RELATIVE_PATH prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/zent.pc.in zent.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/zent.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS ZentMayaNodes ZentMayaTools LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(NOT ZENT_MAYA_DEVKIT)
    install(TARGETS OpenMaya LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/zentmayanodes)
    install(TARGETS zentcheck zentreport RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(TARGETS zent_rig_shared EXPORT ZentMayaNodesTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(FILES src/zent/rig/Rig.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zent/rig)
    # The build tree has the stand-in where a prefix has it, so that both look for it in the same way. CMake's own paths
    # of a build tree end in a colon, by which the loader would look for libraries in the current folder, too.
    set_target_properties(ZentMayaNodes ZentMayaTools zent_rig_shared PROPERTIES
                          INSTALL_RPATH "$ORIGIN/zentmayanodes" BUILD_WITH_INSTALL_RPATH ON)
    set(rpath "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}/zentmayanodes" "$ORIGIN/../lib/zentmayanodes")
    list(REMOVE_DUPLICATES rpath)
    set_target_properties(zentcheck PROPERTIES INSTALL_RPATH "${rpath}" BUILD_WITH_INSTALL_RPATH ON)
endif()
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY farm DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN __pycache__ EXCLUDE)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
