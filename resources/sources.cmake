# The type icon collection: PNG files drawn by make_icons.py, compiled in by AUTORCC.
list(APPEND VORN_QT4_SOURCES
  ${PROJECT_SOURCE_DIR}/resources/ParameterIcons.cpp
  ${PROJECT_SOURCE_DIR}/resources/ParameterIcons.h
  ${PROJECT_SOURCE_DIR}/resources/parameters.qrc)
# The collection is registered in the first resource format, which has no file timestamps: the
# compiled data then depend only on the icons, not on when the files were checked out.
set_source_files_properties(${PROJECT_SOURCE_DIR}/resources/parameters.qrc
  PROPERTIES AUTORCC_OPTIONS "--format-version;1")
