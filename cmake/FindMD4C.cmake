# MD4C::MD4C. The configuration that Debian ships beside the library also wants one of another package.

find_path(MD4C_INCLUDE_FOLDER md4c.h)
find_library(MD4C_LIBRARY md4c)
mark_as_advanced(MD4C_INCLUDE_FOLDER MD4C_LIBRARY)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(MD4C REQUIRED_VARS MD4C_LIBRARY MD4C_INCLUDE_FOLDER)

if(MD4C_FOUND AND NOT TARGET MD4C::MD4C)
  add_library(MD4C::MD4C UNKNOWN IMPORTED)
  set_target_properties(MD4C::MD4C PROPERTIES
    IMPORTED_LOCATION "${MD4C_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${MD4C_INCLUDE_FOLDER}")
endif()
