# ostrelin_room(<name> [USES <room>...] [LINKS <target>...] [LINUX <file>...] SOURCES <file>...)
#
# A folder of src/ as a library of its own, ostrelin_<name>. USES names the rooms below it that it
# may include from; LINKS names what it takes from outside. LINUX lists the files that only this
# system gets, so that no source needs an #ifdef of a system.
function(ostrelin_room name)
  cmake_parse_arguments(ROOM "" "" "USES;LINKS;LINUX;SOURCES" ${ARGN})
  set(sources ${ROOM_SOURCES})
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    list(APPEND sources ${ROOM_LINUX})
  endif()
  set(target ostrelin_${name})
  add_library(${target} STATIC ${sources})
  target_include_directories(${target} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  list(TRANSFORM ROOM_USES PREPEND ostrelin_)
  target_link_libraries(${target} PUBLIC ${ROOM_USES} ${ROOM_LINKS})
  target_precompile_headers(${target} PRIVATE
    <QCoreApplication> <QDateTime> <QJsonArray> <QJsonDocument> <QJsonObject> <QList> <QObject>
    <QString> <QUrl> <QUuid> <chrono> <functional> <memory> <optional> <variant>)
endfunction()
