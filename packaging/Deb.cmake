# The package bitlux-forge, of the component "forge". Another package is another component here.
# No scripts run at its installation: the databases of desktop entries, file types, icons and
# manuals are brought up to date by the packages that own them.
set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL forge)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_PACKAGE_VENDOR "Bitlux Forge developers")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Bitlux Forge developers <developers@bitlux.example>")
set(CPACK_DEBIAN_FORGE_PACKAGE_NAME bitlux-forge)
set(CPACK_DEBIAN_FORGE_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FORGE_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_FORGE_DESCRIPTION
"exercise SPI chips from a PC
Sends SPI words of any shape (1 to 160 bits, eight clocking types, either bit
order, any polarity) by driving the pins of a parallel port or through a USB
dongle, and shows what the chip answers. A virtual bench stands in for port and
chip, so that everything can be tried without hardware.")
set(CPACK_DEBIAN_FORGE_PACKAGE_SHLIBDEPS ON)
# Another version of Python does not see the module.
get_property(python GLOBAL PROPERTY BITLUX_PYTHON)
list(GET python 0 major)
list(GET python 1 minor)
math(EXPR next "${minor} + 1")
set(CPACK_DEBIAN_FORGE_PACKAGE_DEPENDS
    "python3 (>= ${major}.${minor}~), python3 (<< ${major}.${next}~)")
# A program finds a file type by the databases of the first two. The window wants a font, and on
# Wayland its plugin.
set(CPACK_DEBIAN_FORGE_PACKAGE_RECOMMENDS
    "desktop-file-utils, shared-mime-info, fonts-dejavu-core, hicolor-icon-theme, qt6-wayland, udev")
# The plugin of pytest is of use with it alone.
set(CPACK_DEBIAN_FORGE_PACKAGE_SUGGESTS "python3-pytest, python3-pytest-xdist")
set(CPACK_DEBIAN_FORGE_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/conffiles)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
