# Debian packages: the program, and the engine for systems whose own packages don't have it.
#
#   cpack --config <build tree>/CPackConfig.cmake

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ostrelin)
set(CPACK_PACKAGE_CONTACT "${OSTRELIN_CONTACT}")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set(CPACK_COMPONENTS_ALL program engine)
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_BINARY_DIR}/resources/package/packages.cmake")

# The engine is told where its loader will be.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_THREADS 0)
set(CPACK_DEBIAN_PACKAGE_RELEASE "${OSTRELIN_BUILD}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME ostrelin)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS
  "ostrelin-engine (= ${PROJECT_VERSION}-${OSTRELIN_BUILD}), ca-certificates")
# The typefaces of the screens, windows without an X server, and how addresses are opened.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS
  "fonts-inter, fonts-jetbrains-mono, fonts-noto-core, fonts-noto-color-emoji, qt6-wayland, xdg-utils")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "private AI chat on your own machine
Ostrelin chats with a language model that runs on your own machine. It measures
the machine, picks the largest model that fits, downloads and verifies it; from
then on it needs no network at all.
.
With your leave the model searches the web, builds pages that you can print and
send, and remembers what you tell it.")

set(CPACK_DEBIAN_ENGINE_PACKAGE_NAME ostrelin-engine)
set(CPACK_DEBIAN_ENGINE_PACKAGE_SECTION misc)
set(CPACK_COMPONENT_ENGINE_DESCRIPTION "inference engine of Ostrelin
The server of llama.cpp that Ostrelin runs language models in, with the
libraries that it needs, for systems whose own packages don't have it. Nothing
of it is used by anything else.")
include(CPack)
