# What is installed on Linux, and the .deb that CPack makes of it.
include(GNUInstallDirs)
install(TARGETS tidewell)
configure_file(${CMAKE_CURRENT_LIST_DIR}/tidewell.metainfo.xml.in example.quayside.tidewell.metainfo.xml @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/example.quayside.tidewell.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/tidewell.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES resources/branding/icon.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME tidewell.svg)
install(FILES resources/branding/icon.png DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps RENAME tidewell.png)
# As services: they are there, and nothing starts them.
install(FILES ${CMAKE_CURRENT_LIST_DIR}/tidewell-user.service DESTINATION lib/systemd/user RENAME tidewell@.service)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/tidewell-system.service DESTINATION lib/systemd/system RENAME tidewell@.service)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/tidewell.sysusers DESTINATION lib/sysusers.d RENAME tidewell.conf)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/tidewell.tmpfiles DESTINATION lib/tmpfiles.d RENAME tidewell.conf)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tidewell)

# Debian wants these two compressed, without a time in them.
set(compressed ${CMAKE_CURRENT_BINARY_DIR}/package)
file(MAKE_DIRECTORY ${compressed})
add_custom_command(
    OUTPUT ${compressed}/changelog.gz ${compressed}/tidewell.1.gz
    COMMAND gzip -9nc ${CMAKE_CURRENT_LIST_DIR}/changelog > ${compressed}/changelog.gz
    COMMAND gzip -9nc ${CMAKE_CURRENT_LIST_DIR}/tidewell.1 > ${compressed}/tidewell.1.gz
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/changelog ${CMAKE_CURRENT_LIST_DIR}/tidewell.1 VERBATIM)
add_custom_target(package_texts ALL DEPENDS ${compressed}/changelog.gz)
install(FILES ${compressed}/changelog.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tidewell)
install(FILES ${compressed}/tidewell.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tidewell)
set(CPACK_PACKAGE_VENDOR Quayside)
set(CPACK_PACKAGE_CONTACT "The Tidewell developers <tidewell@quayside.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "continuous broadcast logging and archiving")
set(CPACK_PACKAGE_DESCRIPTION "Records one audio source around the clock into time-stamped files, keeps
an index of what was recorded, and plays any moment again. The source is
an audio input, what a playback device plays, or an internet stream.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://quayside.example/tidewell")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Without ffmpeg it writes WAV only and hears no streams; the plug-ins play the archive; procps lets a service be told to
# read its settings again.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "ffmpeg, gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, gstreamer1.0-libav, libqt6svg6, procps, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_LIST_DIR}/postinst ${CMAKE_CURRENT_LIST_DIR}/prerm ${CMAKE_CURRENT_LIST_DIR}/postrm)
include(CPack)
