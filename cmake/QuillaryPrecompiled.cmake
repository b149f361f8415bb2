# Precompiled headers: what most files of a layer read anyway. Each set is compiled once, with the flags that all targets share.
set(standard_headers <algorithm> <array> <chrono> <cmath> <expected> <filesystem> <functional> <map> <memory> <mutex>
  <optional> <ranges> <set> <span> <stop_token> <string> <string_view> <thread> <unordered_map> <utility> <variant> <vector>)
set(core_headers ${standard_headers} <QByteArray> <QCoreApplication> <QFile> <QHash> <QJsonArray> <QJsonDocument>
  <QJsonObject> <QList> <QObject> <QString> <QStringList> <QThreadPool> <QTimer> <QUrl> <QVariant>)
set(quick_headers ${core_headers} <QGuiApplication> <QImage> <QMimeData> <QPainter> <QtQml/qqml.h> <QQuickItem>
  <QQuickWindow>)
set(test_headers <gtest/gtest.h> <gmock/gmock.h>)

function(add_precompiled_set set)
  cmake_parse_arguments(arg "" "" "HEADERS;DEPENDS" ${ARGN})
  set(source ${CMAKE_BINARY_DIR}/precompiled/${set}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Compiles the headers of the set.\n")
  add_library(quillary_precompiled_${set} OBJECT EXCLUDE_FROM_ALL ${source})
  target_link_libraries(quillary_precompiled_${set} PRIVATE quillary_options ${arg_DEPENDS})
  target_precompile_headers(quillary_precompiled_${set} PRIVATE ${arg_HEADERS})
endfunction()

# quillary_precompiled(target set)
# The target reads the headers of the set from their compiled form: core, quick, core_test or quick_test.
function(quillary_precompiled target set)
  if(NOT TARGET quillary_precompiled_${set})
    if(set STREQUAL core)
      add_precompiled_set(core HEADERS ${core_headers} DEPENDS Qt6::Core)
    elseif(set STREQUAL quick)
      add_precompiled_set(quick HEADERS ${quick_headers} DEPENDS Qt6::Quick)
    elseif(set STREQUAL core_test)
      add_precompiled_set(core_test HEADERS ${core_headers} ${test_headers} DEPENDS Qt6::Gui GTest::gmock)
    elseif(set STREQUAL quick_test)
      add_precompiled_set(quick_test HEADERS ${quick_headers} ${test_headers} DEPENDS Qt6::Quick GTest::gmock)
    endif()
  endif()
  target_precompile_headers(${target} REUSE_FROM quillary_precompiled_${set})
endfunction()
