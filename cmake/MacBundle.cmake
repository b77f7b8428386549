# The program as an application bundle: its property list and its icon, which lie in ${made}, and what it finds in
# Contents.

set(resources "${CMAKE_SOURCE_DIR}/resources")
set(bundled "${resources}/catalog.json" "${made}/Ostrelin.icns")
target_sources(ostrelin PRIVATE ${bundled} "${resources}/demo/sprout.gguf")
add_dependencies(ostrelin ostrelin-icons)
set_source_files_properties(${bundled} TARGET_DIRECTORY ostrelin PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
set_source_files_properties("${resources}/demo/sprout.gguf" TARGET_DIRECTORY ostrelin
  PROPERTIES MACOSX_PACKAGE_LOCATION Resources/demo)
set_target_properties(ostrelin PROPERTIES
  OUTPUT_NAME Ostrelin
  MACOSX_BUNDLE TRUE
  MACOSX_BUNDLE_INFO_PLIST "${made}/Info.plist")
install(TARGETS ostrelin BUNDLE DESTINATION . COMPONENT program)
install(PROGRAMS "${CMAKE_BINARY_DIR}/Contents/Helpers/llama-server"
  DESTINATION Ostrelin.app/Contents/Helpers COMPONENT program)
