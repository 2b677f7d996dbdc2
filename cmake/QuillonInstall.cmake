# What is installed where. The applet and the software board have a place of their own, in which they lie as in a build folder: the
# applet looks for the log dispatcher and for its temporary files from the folder above its lib/. Nothing tells a path: an
# installation may be moved as a whole.
include(CMakePackageConfigHelpers)

set(quillonHome ${CMAKE_INSTALL_LIBDIR}/quillon)
set(quillonPackage ${CMAKE_INSTALL_LIBDIR}/cmake/quillon)

# ---- applet, softboard ----

install(TARGETS Quillon EXPORT quillonTargets LIBRARY DESTINATION ${quillonHome}/lib COMPONENT applet)
install(TARGETS softboard softboard_complete fglib5 tavrt orlo_hw EXPORT quillonTargets
    LIBRARY DESTINATION ${quillonHome}/lib/softboard COMPONENT softboard)
install(TARGETS common_logging_dispatcher LIBRARY DESTINATION ${quillonHome}/lib64 COMPONENT softboard)

# ---- client: the shared library; development: headers, archive, packages for builds ----

install(TARGETS quillon_vocabulary EXPORT quillonTargets)
install(TARGETS quillon_client_shared EXPORT quillonTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT client NAMELINK_COMPONENT development)
install(TARGETS quillon_client EXPORT quillonTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
foreach(headers include/quillon client/include/quillon)
    install(DIRECTORY ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
        FILES_MATCHING PATTERN *.h PATTERN *.def)
endforeach()
install(DIRECTORY softboard/include/softboard DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillon COMPONENT development
    FILES_MATCHING PATTERN *.h)

install(EXPORT quillonTargets NAMESPACE quillon:: DESTINATION ${quillonPackage} COMPONENT development)
configure_package_config_file(cmake/quillonConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/quillonConfig.cmake
    INSTALL_DESTINATION ${quillonPackage} PATH_VARS quillonHome)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/quillonConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quillonConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/quillonConfigVersion.cmake
    DESTINATION ${quillonPackage} COMPONENT development)

# From lib/pkgconfig, or lib/TRIPLET/pkgconfig, up to the prefix.
file(RELATIVE_PATH quillonPrefixOfPkgConfig /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/quillon.pc.in ${CMAKE_CURRENT_BINARY_DIR}/quillon.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quillon.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# ---- command, documentation ----

install(TARGETS quillon RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT command)
install(DIRECTORY ${CMAKE_BINARY_DIR}/share/man/man1 DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT command)
install(FILES ${CMAKE_BINARY_DIR}/share/quillon.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME quillon
    COMPONENT command)
install(FILES ${CMAKE_BINARY_DIR}/share/_quillon DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT command)
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/quillon/examples COMPONENT documentation
    PATTERN CMakeLists.txt EXCLUDE)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT documentation PATTERN json EXCLUDE)
install(DIRECTORY docs/json/ DESTINATION ${CMAKE_INSTALL_DATADIR}/quillon/schemas COMPONENT documentation)
