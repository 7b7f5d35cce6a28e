# The Debian package, made by the target "package". What the program links is found by itself.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME plexidex)
set(CPACK_PACKAGE_CONTACT "The KTReminds developers <plexidex@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "calendar, reminders, tasks and contacts")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    " Plexidex keeps books of contacts, each with a calendar and tasks, in one database.\n \
It has windows and a command line, and reads and writes iCalendar and vCard files.")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Zones and letters come at run time.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "tzdata, fonts-dejavu-core | fonts-freefont-ttf | fonts-noto-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
include(CPack)
