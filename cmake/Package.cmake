# What `cmake --install` puts in place: the shared library with the headers a
# client compiles against, the clientdata tool, a CMake package
# (find_package(ClientData) gives ClientData::ClientData) and a pkg-config
# file (clientdata.pc). The foundation is linked into the shared library and
# hidden there, so the package exports nothing else and needs nothing found.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(CLIENTDATA_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ClientData)

install(TARGETS ClientData EXPORT ClientDataTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(TARGET clientdata)
  install(TARGETS clientdata RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

install(EXPORT ClientDataTargets NAMESPACE ClientData:: DESTINATION ${CLIENTDATA_CMAKE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/ClientDataConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/ClientDataConfig.cmake
                              INSTALL_DESTINATION ${CLIENTDATA_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ClientDataConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ClientDataConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ClientDataConfigVersion.cmake
        DESTINATION ${CLIENTDATA_CMAKE_DIR})

# The prefix is found from the file's own place, so that an install with
# `cmake --install --prefix` elsewhere still points at itself.
file(RELATIVE_PATH CLIENTDATA_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" CLIENTDATA_PC_TO_PREFIX ${CLIENTDATA_PC_TO_PREFIX})
configure_file(${CMAKE_CURRENT_LIST_DIR}/clientdata.pc.in ${CMAKE_CURRENT_BINARY_DIR}/clientdata.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/clientdata.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
