# What no single folder owns: documentation, samples, the headers for hosts, the desktop entry.
# Programs and libraries are installed where they are built.
install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs PATTERN "*.py" EXCLUDE)
install(DIRECTORY samples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/toviraexport/samples
    PATTERN "*.py" EXCLUDE)
install(FILES
    plugin/iexporter.h plugin/iexporter_plugin.h plugin/interface.h plugin/plugin.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/toviraexport/plugin)
install(DIRECTORY sdk/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/toviraexport/sdk
    FILES_MATCHING PATTERN "*.h")
if(TOVIRAEXPORT_BUILD_HOST)
    install(FILES packaging/shader-export.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES packaging/shader-export.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()
