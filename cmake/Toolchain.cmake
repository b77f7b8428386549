# Language, warnings, hardening, sanitizers, and the tools that make a build quick where they are present.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()

find_program(MOLD mold)
if(MOLD)
  add_link_options(-fuse-ld=mold)
endif()

option(CMAKE_COMPILE_WARNING_AS_ERROR "Whether a warning of the compiler ends the build" ON)
# A designated initializer names what it sets; what it leaves out has its default.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -Wcast-qual -Wformat=2 -Wundef
                    -Wno-missing-field-initializers)
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
                        QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# A sanitizer's code makes the compiler see uses of what was never set where there are none (gcc's manual,
# "Instrumentation Options").
if(OSTRELIN_SANITIZE)
  add_compile_options(-fsanitize=${OSTRELIN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
                      -Wno-maybe-uninitialized)
  add_link_options(-fsanitize=${OSTRELIN_SANITIZE})
elseif(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  # What Debian's own packages are built with: an overflow ends the program before it does what a stranger wants.
  add_compile_options("$<$<CONFIG:Release>:-fstack-protector-strong;-fstack-clash-protection;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  add_link_options("$<$<CONFIG:Release>:-Wl,-z,relro,-z,now>")
endif()
